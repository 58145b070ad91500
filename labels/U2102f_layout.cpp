#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>

#include "host/forms/form_builder.h"
#include "labels/U2102f.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

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
      {.name = u"tn"_s,
       .label = tr("条码数量:"),
       .kind = FieldKind::Number,
       .places = 0,
       .width = 60,
       .sameRow = true},
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

void TF2102F::buildReceipts() {
  FormBuilder form(*this);
  form.note(u"Label2"_s, tr("2.从进货单条码打印："));
  form.fields({
      {.name = u"NOID"_s,
       .label = tr("只列出最近5单进货单，更早单据请输入单号："),
       .limit = 80,
       .width = 160},
      {.name = u"J"_s,
       .label = tr("条码数量默认填写:          个"),
       .kind = FieldKind::Number,
       .places = 0,
       .width = 60,
       .sameRow = true},
      {.name = u"CB1"_s,
       .label = tr("进货单仅显示系统自动生成条码的商品 (商品编码=条码)"),
       .kind = FieldKind::Check},
  });
  setText(u"J"_s, u"1"_s);
  auto* row = new QHBoxLayout;
  const auto button = [&](const QString& name, const QString& caption, void (TF2102F::*handler)()) {
    QPushButton* made = makeButton(name, caption);
    onClick(made, [this, handler] { (this->*handler)(); });
    row->addWidget(made);
  };
  button(u"btn_ref"_s, tr("刷新 (F5)"), &TF2102F::btn_refClick);
  button(u"BTN_TM"_s, tr("生成条码  (Ins)"), &TF2102F::BTN_TMClick);
  row->addStretch(1);
  button(u"Button1"_s, tr("清空上次生成暂存的标签"), &TF2102F::Button1Click);
  QPushButton* close = makeButton(u"Button3"_s, tr("关闭      (Esc)"));
  onClick(close, [this] { btn_CancelClick(); });
  row->addWidget(close);
  form.wide(row);

  const QString time = u"yyyy-MM-dd HH:mm"_s;
  DBGridEh1 = makeGrid(body(), u"DBGridEh1"_s);
  DBGridEh1->setColumns(
      {{.field = u"NOID"_s, .title = tr("单号"), .width = 110},
       {.field = u"KH_GYS_ID"_s, .title = tr("供应商代号"), .visible = false},
       {.field = u"KG_NAME"_s, .title = tr("供应商简称"), .width = 200},
       {.field = u"YW_ID"_s, .title = tr("业务员代号"), .visible = false},
       {.field = u"YW_NAME"_s, .title = tr("业务员"), .width = 90},
       {.field = u"CK_ID"_s, .title = tr("仓库号"), .visible = false},
       {.field = u"CK_NAME"_s, .title = tr("仓库"), .width = 110},
       {.field = u"BDATE"_s, .title = tr("开单日期"), .width = 120, .displayFormat = time},
       {.field = u"EDATE"_s, .title = tr("最后更改"), .width = 120, .displayFormat = time}});
  DBGridEh1->setReadOnly(true);
  DBGridEh1->setEmptyText(tr("没有进货单"));
  DBGridEh1->setMaximumHeight(180);
  DBGridEh1->setRecordSet(&AdoQry_Main);
  form.wide(DBGridEh1);

  DBGridEh = makeGrid(body(), u"DBGridEh"_s);
  DBGridEh->setColumns(
      {{.field = u"WL_ID"_s, .title = tr("商品编号"), .width = 90},
       {.field = u"TM"_s, .title = tr("条码"), .width = 120},
       {.field = u"WL_NAME"_s, .title = tr("商品名称"), .width = 200},
       {.field = u"WL_GG"_s, .title = tr("规格"), .width = 80},
       {.field = u"DW_NAME"_s, .title = tr("位"), .width = 40},
       {.field = u"SJ"_s, .title = tr("售价"), .width = 70},
       {.field = u"VIPSJ"_s, .title = tr("会员价"), .width = 70},
       {.field = u"SL"_s, .title = tr("数量"), .width = 70, .sum = true},
       {.field = u"tmsl"_s, .title = tr("条码数量"), .width = 70, .readOnly = false, .sum = true},
       {.field = u"NOTE"_s, .title = tr("备注"), .width = 140}});
  DBGridEh->setFooterVisible(true);
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
  form.note(u"Label6"_s, tr("操作提示  [ C ]：清空   [空格]：数量清0  [DELETE]：删除一行"));
}

}  // namespace goodsbook
