// The elements of the import of new products.

#include <QBoxLayout>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

#include "host/U_glo.h"
#include "host/controls/storage.h"
#include "host/forms/form_builder.h"
#include "host/lookup/pickers.h"
#include "products/U2101_imp.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int rowHeight = 20;
constexpr int pathWidth = 420;
constexpr int leastReasonWidth = 190;  // a known barcode's

struct Column {
  QString name, title;
  int size, width;
};

std::vector<Column> columns() {
  const auto tr = [](const char* text) { return TF2101_IMP::tr(text); };
  return {{u"COL1"_s, tr("条码"), 30, 110},  {u"COL2"_s, tr("品名"), 80, 170},
          {u"COL3"_s, tr("规格"), 30, 64},   {u"COL4"_s, tr("零售价"), 30, 64},
          {u"COL5"_s, tr("会员价"), 30, 64}, {u"COL6"_s, tr("-"), 30, leastReasonWidth},
          {u"COL7"_s, tr("-"), 30, 20},      {u"COL8"_s, tr("-"), 30, 20},
          {u"COL9"_s, tr("-"), 30, 20},      {u"COL0"_s, tr("-"), 30, 20}};
}

}  // namespace

TF2101_IMP::TF2101_IMP(QWidget* owner) : TFrm_Base_Dialog(owner) {
  setWindowTitle(tr("新商品导入"));
  resize(960, 640);
  buildHead();
  buildGrid();
  buildFoot();
  FormCreate();
}

void TF2101_IMP::buildHead() {
  head_ = new QWidget(body());
  auto* path = new QWidget(head_);
  FormBuilder form(*this, path);
  form.field({.name = u"Edt_path"_s,
              .label = tr("文件路径："),
              .kind = FieldKind::Lookup,
              .limit = 20,
              .width = pathWidth});
  path->layout()->setContentsMargins(0, 0, 0, 0);
  btn_ref = makeButton(u"btn_ref"_s, tr("刷新(F12)"));
  btn_ref->setToolTip(tr("读取文件 (F12)"));
  auto* row = new QHBoxLayout(head_);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(path);
  row->addWidget(btn_ref);
  row->addStretch(1);
  body()->layout()->addWidget(head_);
  onClick(btn_ref, [this] { btn_refClick(); });
  connect(lookupEdit(u"Edt_path"_s), &ButtonEdit::ButtonClick, this,
          [this] { guarded(this, [this] { Edt_pathButtonClick(); }); });
}

void TF2101_IMP::buildGrid() {
  D_MAIN.setObjectName(u"D_MAIN"_s);
  D_MAIN.setParent(this);
  std::vector<Field> fields;
  std::vector<GridColumn> shown;
  for (const Column& column : columns()) {
    fields.push_back({.name = column.name, .size = column.size, .label = column.title});
    shown.push_back({.field = column.name, .title = column.title, .width = column.width, .readOnly = false});
  }
  D_MAIN.create(fields);
  GRID1 = new TDBGridEh(body());
  GRID1->setObjectName(u"GRID1"_s);
  GRID1->setColumns(shown);
  GRID1->setRecordSet(&D_MAIN);
  GRID1->verticalHeader()->setMinimumSectionSize(rowHeight);
  GRID1->verticalHeader()->setDefaultSectionSize(rowHeight);
  GRID1->setSelectionBehavior(QAbstractItemView::SelectRows);
  GRID1->viewport()->installEventFilter(this);
  connect(GRID1, &TDBGridEh::enteredBehindLast, this, &TF2101_IMP::focusNextField);
  GRID1->setEmptyText(
      tr("选择文件后按 F12 读取：第 1 行为表头，其下各列依次为条码、品名、规格、零售价、会员价"));
  static_cast<QBoxLayout*>(body()->layout())->addWidget(GRID1, 1);

  auto* counter = new QLabel(tr("行计数："), body());
  counter->setObjectName(u"Label4"_s);
  lab_hint = new QLabel(u"0"_s, body());
  lab_hint->setObjectName(u"lab_hint"_s);
  lab_hint->setMinimumWidth(lab_hint->fontMetrics().horizontalAdvance(u'0') * 7);
  progress_ = new QProgressBar(body());
  progress_->setObjectName(u"progress"_s);
  progress_->hide();
  result_ = new QLabel(body());
  result_->setObjectName(u"lab_result"_s);
  result_->setTextFormat(Qt::PlainText);
  result_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  result_->setWordWrap(true);
  auto* row = new QHBoxLayout;
  row->addWidget(counter);
  row->addWidget(lab_hint);
  row->addWidget(progress_, 1);
  row->addWidget(result_, 1);
  static_cast<QBoxLayout*>(body()->layout())->addLayout(row);
}

bool TF2101_IMP::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && watched == GRID1->viewport()) fitReason();
  return TFrm_Base_Dialog::eventFilter(watched, event);
}

// What became of a row takes the width that the other columns leave.
void TF2101_IMP::fitReason() {
  const int reason = GRID1->columnOf(u"COL6"_s);
  const int others = GRID1->horizontalHeader()->length() - GRID1->columnWidth(reason);
  GRID1->setColumnWidth(reason, std::max(leastReasonWidth, GRID1->viewport()->width() - others));
}

void TF2101_IMP::buildFoot() {
  foot_ = new QWidget(body());
  FormBuilder form(*this, foot_);
  form.fields({
      {.name = u"CLASS_ID"_s,
       .label = tr("指定导入商品的默认【商品分类】"),
       .kind = FieldKind::Lookup,
       .limit = 4,
       .check = FieldCheck::Id,
       .nameLabel = u"CLASS_NAME"_s},
      {.name = u"dw_id"_s,
       .label = tr("指定导入商品的默认【计量单位】"),
       .kind = FieldKind::Lookup,
       .limit = 2,
       .check = FieldCheck::Id,
       .nameLabel = u"DW_NAME"_s},
      {.name = u"CK_ID1"_s,
       .label = tr("仓库:"),
       .kind = FieldKind::Lookup,
       .limit = 6,
       .check = FieldCheck::Id,
       .nameLabel = u"ck_name"_s,
       .hint = tr("如果需要初始化导入商品库存，请填所属仓库，否则留空")},
      {.name = u"cb1"_s, .label = tr("重复条码当新商品导入"), .kind = FieldKind::Check},
      {.name = u"cb2"_s,
       .label = tr("导入前清空商品资料(初次使用时可勾选)"),
       .kind = FieldKind::Check,
       .sameRow = true},
  });
  form.note(u"Label6"_s, tr("导入文件内容含(')号的自动替换成(\")"));
  foot_->layout()->setContentsMargins(0, 0, 0, 0);
  body()->layout()->addWidget(foot_);
}

void TF2101_IMP::FormCreate() {
  TFrm_Base_Dialog::FormCreate();
  if (manager_) return;
  manager_ = new TIniPropStorageManEh(G_CoName, this);
  storage_ = new TPropStorageEh(u"F2101_IMP"_s, manager_, this);
  storage_->addProperty(edit(u"Edt_path"_s), "text");
  storage_->LoadProperties();
  (new TFrm_Sys_LINK_CL(this))->init(lookupEdit(u"CLASS_ID"_s));
  (new TFrm_Sys_LINK_DW(this))
      ->init(nullptr, label(u"DW_NAME"_s), lookupEdit(u"dw_id"_s), nullptr, {}, {}, {});
  (new TFrm_Sys_LINK_CK(this))->init(nullptr, lookupEdit(u"CK_ID1"_s), nullptr, {}, {}, {});
  elementNamed(u"CK_ID1"_s)->setEnabled(!G_CKCOUNT_R);
  setText(u"CK_ID1"_s, G_ckid);
  setText(u"ck_name"_s, G_CkName);
}

QString TF2101_IMP::helpText() const {
  return tr(
      "从电子表格（.xls、.xlsx、.csv，装有 LibreOffice 时还有 .ods、.et）导入新商品。第 1 行为表头，其下各列依次为条码、品名、规格、零售价、会员价，读到条码为空的行为止。\n\n"
      "F12  读取文件\nF9  导入\nEsc  导入中为停止，否则关闭");
}

}  // namespace goodsbook
