#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequence>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>

#include "host/U_glo.h"
#include "host/forms/form_builder.h"
#include "products/U2101_1.h"
#include "products/picture.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

QAction* addItem(QWidget* menu, const QString& name, const QString& text, const QKeySequence& key) {
  auto* action = new QAction(text, menu);
  action->setObjectName(name);
  action->setShortcut(key);
  menu->addAction(action);
  return action;
}

// Prices that are changed where they stand show at least the decimals of the price format, and hide none.
QString openPriceFormat() {
  QString format = G_PriceFormat;
  qsizetype end = format.size();
  while (end > 0 && !u"0#."_s.contains(format[end - 1])) --end;
  return format.insert(end, format.contains(u'.') ? u"######"_s : u".######"_s);
}

// The labels of the screen's parts end at one edge.
void alignLabels(QWidget* area, int width) {
  static_cast<QGridLayout*>(area->layout())->setColumnMinimumWidth(0, width);
}

}  // namespace

void TF2101_1::buildHeader() {
  auto* top = new QHBoxLayout;
  auto* area = new QWidget(body());
  FormBuilder header(*this, area);
  header.fields({productField(u"Edit1"_s), productField(u"Edit2"_s), productField(u"Edit3"_s),
                 productField(u"CLASS_ID"_s), productField(u"YS"_s), productField(u"check_kc"_s, true),
                 productField(u"CD"_s), productField(u"NOTE"_s)});
  top->addWidget(area, 1);
  top->addWidget(buildPicture());

  unitPages_ = new QStackedWidget(body());
  unitPages_->addWidget(buildSingleUnit());
  unitPages_->addWidget(buildUnitGrid());

  FormBuilder form(*this);
  form.wide(top);
  form.note(u"Label20"_s, tr("【一种单位/多种单位】 输入方式切换请按(F6)"));
  form.wide(unitPages_, 1);
  auto* foot = new QWidget(body());
  FormBuilder(*this, foot)
      .fields({
          {.name = u"user_name"_s, .label = tr("登录用户:"), .kind = FieldKind::Value},
          {.name = u"BDATE"_s, .label = tr("登录时间:"), .kind = FieldKind::Value, .sameRow = true},
          {.name = u"EDATE"_s, .label = tr("最后更改:"), .kind = FieldKind::Value, .sameRow = true},
      });
  form.wide(foot);
  alignLabels(area, labelWidth());
  alignLabels(foot, labelWidth());
  attachPickers();
  makeChangeButton();
}

int TF2101_1::labelWidth() const {
  return fontMetrics().horizontalAdvance(tr("登录用户:"));
}

QWidget* TF2101_1::buildPicture() {
  Image1 = new PictureLabel(body());
  Image1->setObjectName(u"Image1"_s);
  Image1->setEmptyText(tr("没有图片\n（F7 或右键打开）"));
  Image1->setContextMenuPolicy(Qt::ActionsContextMenu);
  const auto item = [this](const QString& name, const QString& text, const QKeySequence& key,
                           void (TF2101_1::*handler)()) {
    connect(addItem(Image1, name, text, key), &QAction::triggered, this,
            [this, handler] { guarded(this, [this, handler] { (this->*handler)(); }); });
  };
  item(u"N1"_s, tr("打开图片"), Qt::Key_F7, &TF2101_1::openPicture);
  item(u"N3"_s, tr("清除图片"), Qt::SHIFT | Qt::Key_F7, &TF2101_1::clearPicture);
  item(u"N2"_s, tr("另存图片"), Qt::CTRL | Qt::Key_S, &TF2101_1::savePicture);
  item(u"N4"_s, tr("全部显示"), Qt::Key_F8, &TF2101_1::showPicture);
  return Image1;
}

QWidget* TF2101_1::buildSingleUnit() {
  auto* page = new QWidget(body());
  auto* area = new QWidget(page);
  auto* row = new QHBoxLayout(page);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(area);
  row->addStretch(1);
  const auto price = [](const QString& name, const QString& label, const QString& column, bool sameRow) {
    return FieldSpec{.name = name,
                     .label = label,
                     .kind = FieldKind::Number,
                     .check = FieldCheck::FloatCanZero,
                     .column = column,
                     .width = 120,
                     .sameRow = sameRow};
  };
  FieldSpec barcode = productField(u"TM"_s, true);
  barcode.width = 240;
  FieldSpec cost = price(u"DJ"_s, tr("加 权 价"), u"DJ"_s, false);
  cost.check = FieldCheck::None;
  cost.readOnly = true;
  FormBuilder(*this, area)
      .fields({
          productField(u"dw_id"_s),
          barcode,
          price(u"SJ"_s, tr("零 售 价"), u"SJ"_s, false),
          price(u"VIPSJ"_s, tr("会 员 价"), u"VIPSJ"_s, true),
          price(u"pfj"_s, tr("批 发 价"), u"PFJ"_s, false),
          price(u"CGJ"_s, tr("采 购 价"), u"CGJ"_s, true),
          cost,
      });
  alignLabels(area, labelWidth());
  return page;
}

QWidget* TF2101_1::buildUnitGrid() {
  DBGridEh1 = new TDBGridEh(body());
  DBGridEh1->setObjectName(u"DBGridEh1"_s);
  const auto number = [](const QString& field, const QString& title) {
    return GridColumn{
        .field = field, .title = title, .width = 70, .readOnly = false, .displayFormat = openPriceFormat()};
  };
  DBGridEh1->setColumns({
      {.field = u"T"_s, .title = tr("主单位"), .width = 48, .readOnly = false, .checkBox = true},
      {.field = u"DW_ID"_s,
       .title = tr("单位代号"),
       .width = 62,
       .readOnly = false,
       .upperCase = true,
       .ellipsis = true},
      {.field = u"dw_name"_s, .title = tr("单位"), .width = 48},
      {.field = u"ABASE"_s, .title = tr("转换率"), .width = 66, .readOnly = false, .decimalPlaces = 8},
      number(u"SJ"_s, tr("零售价")),
      number(u"VIPSJ"_s, tr("会员价")),
      number(u"PFJ"_s, tr("批发价")),
      number(u"CGJ"_s, tr("采购价")),
      {.field = u"TM"_s, .title = tr("条码"), .width = 104, .readOnly = false},
      {.field = u"Y"_s, .title = tr("年"), .width = 32},
      {.field = tr("多条码"), .title = tr("多条码"), .width = 56, .button = true},
      {.field = tr("区域售价"), .title = tr("区域售价"), .width = 64, .button = true},
  });
  // All columns are in sight in every size of the window, with a scroll bar beside them, too.
  DBGridEh1->setMinimumWidth(DBGridEh1->horizontalHeader()->length() + 2 * DBGridEh1->frameWidth() +
                             DBGridEh1->verticalScrollBar()->sizeHint().width());
  DBGridEh1->setSortable(false);
  DBGridEh1->setEmptyText(tr("按 ↓ 或 Ins 增加一种单位"));
  DBGridEh1->setRecordSet(&DataSetDJ);
  DBGridEh1->setContextMenuPolicy(Qt::ActionsContextMenu);
  const auto item = [this](const QString& name, const QString& text, const QKeySequence& key,
                           void (TF2101_1::*handler)()) {
    QAction* action = addItem(DBGridEh1, name, text, key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this,
            [this, handler] { guarded(this, [this, handler] { (this->*handler)(); }); });
  };
  item(u"N5"_s, tr("新增"), Qt::Key_Insert, &TF2101_1::addUnitRow);
  item(u"N6"_s, tr("删除"), Qt::CTRL | Qt::Key_Delete, &TF2101_1::removeUnitRow);
  connect(DBGridEh1, &TDBGridEh::columnButtonClicked, this,
          [this](int row, const QString& field) { guarded(this, [&] { unitButtonClick(row, field); }); });
  connect(DBGridEh1, &TDBGridEh::enteredBehindLast, this, &TF2101_1::focusNextField);
  connect(&DataSetDJ, &RecordSet::afterPost, this, [this] { gridChange(); });
  return DBGridEh1;
}

}  // namespace goodsbook
