#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>

#include "host/forms/form_builder.h"
#include "labels/U2102f.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// The receipts and their lines, with the fields that no column shows.
std::vector<Field> headFields() {
  return {{.name = u"NOID"_s, .size = 12, .label = TF2102F::tr("单号")},
          {.name = u"KH_GYS_ID"_s, .size = 10, .label = TF2102F::tr("供应商代号")},
          {.name = u"KG_NAME"_s, .size = 40, .label = TF2102F::tr("供应商简称")},
          {.name = u"YW_ID"_s, .size = 4, .label = TF2102F::tr("业务员代号")},
          {.name = u"YW_NAME"_s, .label = TF2102F::tr("业务员")},
          {.name = u"CK_ID"_s, .size = 4, .label = TF2102F::tr("仓库号")},
          {.name = u"CK_NAME"_s, .size = 16, .label = TF2102F::tr("仓库")},
          {.name = u"BDATE"_s, .type = FieldType::DateTime, .label = TF2102F::tr("开单日期")},
          {.name = u"EDATE"_s, .type = FieldType::DateTime, .label = TF2102F::tr("最后更改")},
          {.name = u"SEND_ID"_s, .size = 2, .label = TF2102F::tr("进货代号")},
          {.name = u"SEND_NAME"_s, .size = 10, .label = TF2102F::tr("进货方式")},
          {.name = u"USER_ID"_s, .size = 10, .label = TF2102F::tr("用户号")},
          {.name = u"USER_NAME"_s, .size = 10, .label = TF2102F::tr("开单")}};
}

std::vector<Field> lineFields() {
  return {{.name = u"SJ"_s, .type = FieldType::Float, .label = TF2102F::tr("售价")},
          {.name = u"VIPSJ"_s, .type = FieldType::Float, .label = TF2102F::tr("会员价")},
          {.name = u"CD"_s, .size = 100, .label = TF2102F::tr("产地")},
          {.name = u"NOID"_s, .size = 12, .label = TF2102F::tr("订单编号")},
          {.name = u"WL_ID"_s, .label = TF2102F::tr("商品编号")},
          {.name = u"WL_NAME"_s, .size = 80, .label = TF2102F::tr("商品名称")},
          {.name = u"WL_GG"_s, .size = 30, .label = TF2102F::tr("规格")},
          {.name = u"ADW"_s, .type = FieldType::Integer},
          {.name = u"DW_ID"_s, .size = 2},
          {.name = u"DW_NAME"_s, .size = 6, .label = TF2102F::tr("位")},
          {.name = u"SL"_s, .type = FieldType::Float, .label = TF2102F::tr("数量")},
          {.name = u"DJ"_s, .type = FieldType::Float, .label = TF2102F::tr("单价")},
          {.name = u"MONEY"_s, .type = FieldType::Float, .label = TF2102F::tr("金额")},
          {.name = u"SL_RETURN"_s, .type = FieldType::Float, .label = TF2102F::tr("退货数量")},
          {.name = u"NOTE"_s, .size = 50, .label = TF2102F::tr("备注")},
          {.name = u"DW_J"_s, .type = FieldType::Float, .label = TF2102F::tr("数量|件")},
          {.name = u"DW_L"_s, .type = FieldType::Float, .label = TF2102F::tr("数量|零数")},
          {.name = u"DW_ZH"_s, .type = FieldType::Float, .label = TF2102F::tr("成本金额")},
          {.name = u"COLORVALUE"_s, .type = FieldType::Integer},
          {.name = u"TM"_s, .size = 30, .label = TF2102F::tr("条码")},
          {.name = u"id"_s, .type = FieldType::Integer},
          {.name = u"tmsl"_s, .type = FieldType::Integer, .label = TF2102F::tr("条码数量")}};
}

// Zeros are noise in these grids: only their background is painted.
void hideZero(QStyleOptionViewItem& option) {
  if (option.text != "0"_L1) return;
  option.text.clear();
  if (option.state & QStyle::State_Selected) {
    const QColor selected(201, 208, 226);
    option.palette.setColor(QPalette::Highlight, selected);
    option.backgroundBrush = selected;
  }
}

// Its blanks are as wide as what stands in them needs.
class GapLabel : public QLabel {
 public:
  using QLabel::QLabel;
  QString head() const { return text().section(u' ', 0, 0); }
  QString tail() const { return text().section(u' ', -1); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const auto draw = [&](Qt::Alignment side, const QString& part) {
      style()->drawItemText(&painter, rect(), static_cast<int>(side | Qt::AlignVCenter), palette(),
                            isEnabled(), part, foregroundRole());
    };
    draw(Qt::AlignLeft, head());
    draw(Qt::AlignRight, tail());
  }
};

TDBGridEh* makeGrid(QWidget* parent, const QString& name) {
  auto* grid = new TDBGridEh(parent);
  grid->setObjectName(name);
  grid->setRowNumbers(true);
  grid->setDrawColumnCell([](int, const QString&, QStyleOptionViewItem& option) { hideZero(option); });
  return grid;
}

}  // namespace

void TF2102F::buildSingle() {
  FormBuilder form(*this);
  form.note(u"Label1"_s, tr("1.单个条码打印："));
  form.fields({
      {.name = u"Edit1"_s,
       .label = tr("请录入商品编码 / 条码 :"),
       .limit = 30,
       .exit = [this] { Edit1Exit(); }},
      {.name = u"tn"_s, .label = tr("条码数量:"), .kind = FieldKind::Number, .width = 60, .sameRow = true},
      {.name = u"L1"_s, .label = tr("编号："), .kind = FieldKind::Value},
      {.name = u"L2"_s, .label = tr("条码："), .kind = FieldKind::Value, .sameRow = true},
      {.name = u"L3"_s, .label = tr("名称："), .kind = FieldKind::Value, .sameRow = true},
      {.name = u"L4"_s, .label = tr("规格："), .kind = FieldKind::Value},
      {.name = u"L5"_s, .label = tr("产地："), .kind = FieldKind::Value, .sameRow = true},
      {.name = u"L6"_s, .label = tr("售  价："), .kind = FieldKind::Value},
      {.name = u"L7"_s, .label = tr("会员价："), .kind = FieldKind::Value, .sameRow = true},
  });
  for (int i = 1; i <= 7; ++i) setText(u'L' + QString::number(i), u"*"_s);
  setText(u"tn"_s, u"1"_s);
  QPushButton* single = makeButton(u"BTN_1"_s, tr("生成单个条码   (Home)"));
  onClick(single, [this] { BTN_1Click(); });
  auto* row = new QHBoxLayout;
  row->addWidget(single);
  row->addStretch(1);
  form.wide(row);
}

// The default count stands in the gap of its label.
QWidget* TF2102F::defaultCount() {
  auto* label = new GapLabel(tr("条码数量默认填写:          个"), body());
  const QFontMetrics metrics = label->fontMetrics();
  const int before = metrics.horizontalAdvance(label->head()),
            behind = metrics.horizontalAdvance(label->tail());
  constexpr int frame = 16, space = 4;
  const int width = metrics.horizontalAdvance(u"00000"_s) + frame;
  FormBuilder form(*this, label);
  QWidget* count = form.field({.name = u"J"_s, .kind = FieldKind::Number, .width = width});
  auto* layout = static_cast<QGridLayout*>(label->layout());
  layout->setContentsMargins(before + space, 0, 0, 0);
  layout->setHorizontalSpacing(0);
  label->setBuddy(count);
  label->setFixedWidth(before + space + width + space + behind);
  setText(u"J"_s, u"1"_s);
  return label;
}

void TF2102F::buildReceipts() {
  FormBuilder form(*this);
  form.note(u"Label2"_s, tr("2.从进货单条码打印："));
  form.fields({
      {.name = u"NOID"_s,
       .label = tr("只列出最近5单进货单，更早单据请输入单号："),
       .limit = 80,
       .width = 160},
      {.name = u"CB1"_s,
       .label = tr("进货单仅显示系统自动生成条码的商品 (商品编码=条码)"),
       .kind = FieldKind::Check},
  });
  auto* row = new QHBoxLayout;
  const auto button = [&](const QString& name, const QString& caption, void (TF2102F::*handler)()) {
    QPushButton* made = makeButton(name, caption);
    onClick(made, [this, handler] { (this->*handler)(); });
    row->addWidget(made);
  };
  row->setSpacing(8);
  button(u"btn_ref"_s, tr("刷新 (F5)"), &TF2102F::btn_refClick);
  row->addSpacing(16);
  row->addWidget(defaultCount());
  button(u"BTN_TM"_s, tr("生成条码  (Ins)"), &TF2102F::BTN_TMClick);
  row->addStretch(1);
  button(u"Button1"_s, tr("清空上次生成暂存的标签"), &TF2102F::Button1Click);
  QPushButton* close = makeButton(u"Button3"_s, tr("关闭      (Esc)"));
  onClick(close, [this] { btn_CancelClick(); });
  row->addWidget(close);
  form.wide(row);

  AdoQry_Main.declareFields(headFields());
  AdoQry_Tmp.declareFields(lineFields());
  const QString time = u"yyyy-MM-dd HH:mm"_s;
  DBGridEh1 = makeGrid(body(), u"DBGridEh1"_s);
  DBGridEh1->setColumns({{.field = u"NOID"_s, .width = 110},
                         {.field = u"KH_GYS_ID"_s, .visible = false},
                         {.field = u"KG_NAME"_s, .width = 200},
                         {.field = u"YW_ID"_s, .visible = false},
                         {.field = u"YW_NAME"_s, .width = 90},
                         {.field = u"CK_ID"_s, .visible = false},
                         {.field = u"CK_NAME"_s, .width = 110},
                         {.field = u"BDATE"_s, .width = 120, .displayFormat = time},
                         {.field = u"EDATE"_s, .width = 120, .displayFormat = time}});
  DBGridEh1->setReadOnly(true);
  DBGridEh1->setEmptyText(tr("没有进货单"));
  DBGridEh1->setMinimumHeight(90);
  DBGridEh1->setMaximumHeight(180);
  DBGridEh1->setRecordSet(&AdoQry_Main);
  form.wide(DBGridEh1);

  DBGridEh = makeGrid(body(), u"DBGridEh"_s);
  DBGridEh->setColumns({{.field = u"WL_ID"_s, .width = 80},
                        {.field = u"TM"_s, .width = 104},
                        {.field = u"WL_NAME"_s, .width = 180},
                        {.field = u"WL_GG"_s, .width = 60},
                        {.field = u"DW_NAME"_s, .width = 36},
                        {.field = u"SJ"_s, .width = 58},
                        {.field = u"VIPSJ"_s, .width = 58},
                        {.field = u"SL"_s, .width = 58, .sum = true},
                        {.field = u"tmsl"_s, .width = 70, .readOnly = false, .sum = true},
                        {.field = u"NOTE"_s, .width = 230}});
  DBGridEh->setFooterVisible(true);
  DBGridEh->setMinimumSize(760, 140);  // up to the counts, which are what is typed here
  DBGridEh->setEmptyText(tr("进货单没有商品"));
  DBGridEh->setRecordSet(&AdoQry_Tmp);
  DBGridEh->setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* remove = new QAction(tr("删除"), this);
  remove->setObjectName(u"Act_Delete"_s);
  remove->setShortcut(Qt::Key_Delete);
  remove->setShortcutContext(Qt::WidgetShortcut);
  DBGridEh->addAction(remove);
  connect(remove, &QAction::triggered, this, [this] { guarded(this, [this] { Act_DeleteExecute(); }); });
  connect(DBGridEh, &TDBGridEh::keyPressed, this,
          [this](QKeyEvent* event) { guarded(this, [&] { DBGridEhKeyPress(event); }); });
  connect(checkBox(u"CB1"_s), &QCheckBox::toggled, this, [this] { guarded(this, [this] { CB1Click(); }); });
  form.wide(DBGridEh, 1);
  static_cast<QBoxLayout*>(body()->layout())->setStretch(1, 1);  // all height is the grids'
  form.note(u"Label6"_s, tr("操作提示  [ C ]：清空   [空格]：数量清0  [DELETE]：删除一行"));
}

}  // namespace goodsbook
