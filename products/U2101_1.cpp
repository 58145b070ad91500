#include "products/U2101_1.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/lookup/pickers.h"
#include "host/session.h"
#include "products/U2101_sj.h"
#include "products/U2101_tm.h"
#include "products/picture.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

const QString rememberedStyle = u"Login/BA001"_s;  // true: one unit

QString settingsFile() {
  return Session::current().programFile(G_inifielname);
}

template <class Dialog>
void runUnitDialog(QWidget* owner, const QString& adw, bool readOnly) {
  Dialog dialog(owner);
  dialog.init(adw);
  if (readOnly) dialog.showOnly();
  dialog.exec();
}

}  // namespace

TF2101_1::TF2101_1(QWidget* owner) : ProductEditor(owner), units_(DataSetDJ) {
  DataSetDJ.setObjectName(u"DataSetDJ"_s);
  AdoQry_Pict.setObjectName(u"AdoQry_Pict"_s);
  resize(880, 560);
  buildHeader();
  FormCreate();
  setSingleUnit(QSettings(settingsFile(), QSettings::IniFormat).value(rememberedStyle, true).toBool());
}

void TF2101_1::FormClose() {
  QSettings(settingsFile(), QSettings::IniFormat).setValue(rememberedStyle, singleUnit_ ? 1 : 0);
  ProductEditor::FormClose();
}

QString TF2101_1::helpText() const {
  return ProductEditor::helpText() +
         tr("\nF6  一种单位/多种单位\nIns、Ctrl+Del  表格中增加、删除一种单位\nF7、Shift+F7  打开、清除图片\nF8  全部显示图片\nCtrl+S  另存图片\nF11  更改记录");
}

void TF2101_1::setSingleUnit(bool single) {
  singleUnit_ = single;
  unitPages_->setCurrentIndex(single ? 0 : 1);
}

void TF2101_1::RefreshData() {
  setLoading(true);
  typedSingle_ = typedInGrid_ = false;
  BTN_CHANGE->setVisible(!isAdding());
  firstFocus = isAdding() && !GPARAM0 ? u"Edit1"_s : u"Edit2"_s;
  lockedFields = mode() == "Edit"_L1 ? u"EDIT1"_s : QString();
  loadFields();
  refreshHeader();
  if (mode() == "Add"_L1) {
    units_.openEmpty(moduleCode_);
  } else if (mode() == "CopyAdd"_L1) {
    units_.openCopy(moduleCode_, listRows().text(u"WL_ID"_s));
  } else {
    units_.open(moduleCode_, listRows().text(u"WL_ID"_s));
  }
  DBGridEh1->setReadOnly(isReadOnly());
  DBGridEh1->setAllowAppend(!isReadOnly());
  refreshPicture();
  ProductEditor::RefreshData();
}

void TF2101_1::refreshHeader() {
  if (mode() == "Add"_L1) {
    showNew();
    for (const QString& name : {u"TM"_s, u"SJ"_s, u"VIPSJ"_s, u"pfj"_s, u"CGJ"_s, u"DJ"_s})
      setText(name, u"0"_s);
  } else {
    setText(u"user_name"_s, listRows().text(u"USER_NAME"_s));
    showDates(true);
    setText(u"DJ"_s, listRows().text(u"DJ"_s));  // rounded: nobody saves it
  }
  if (mode() == "CopyAdd"_L1) {
    setText(u"Edit1"_s, {});
    setText(u"DJ"_s, u"0"_s);
  }
  if (isAdding() && GPARAM0) setText(u"Edit1"_s, tr("自动编号"));
}

void TF2101_1::refreshPicture() {
  if (isAdding()) {
    AdoQry_Pict.create({{.name = u"WL_ID"_s, .size = 20}, {.name = u"pict"_s, .type = FieldType::Blob}});
  } else {
    opensql(AdoQry_Pict, moduleCode_,
            u"select WL_ID,pict from D1801 where wl_id='"_s + listRows().text(u"WL_ID"_s) + u'\'');
  }
  Image1->setPicture(AdoQry_Pict.isEmpty() ? QByteArray() : AdoQry_Pict.value(u"pict"_s).toByteArray());
}

void TF2101_1::Edit1Exit() {
  // Such a number is drawn when it is saved.
  if (GPARAM0 && isAdding() && text(u"Edit1"_s) == tr("自动编号")) return;
  ProductEditor::Edit1Exit();
}

void TF2101_1::unitButtonClick(int row, const QString& field) {
  DataSetDJ.moveTo(row);
  if (field.compare("DW_ID"_L1, Qt::CaseInsensitive) == 0) {
    pickUnit();
    return;
  }
  if (units_.isNew()) {
    DISPINFO(tr("当您为商品新增加一种单位时，必须先保存后才可以定义相关的条码及区域售价!"), 5);
    return;
  }
  const QString adw = DataSetDJ.text(u"adw"_s);
  if (field == tr("多条码")) {
    runUnitDialog<TF2101_TM>(this, adw, isReadOnly());
  } else {
    runUnitDialog<TF2101_SJ>(this, adw, isReadOnly());
  }
}

void TF2101_1::pickUnit() {
  DBGridEh1->setSelectedField(u"DW_ID"_s);
  if (!gridUnitPicker_) gridUnitPicker_ = new LookupPicker(lookup::units(), this);
  gridUnitPicker_->showForCell(DBGridEh1, u"DW_ID"_s, {});
}

void TF2101_1::addUnitRow() {
  DBGridEh1->appendRow();
}

void TF2101_1::removeUnitRow() {
  if (isReadOnly() || DataSetDJ.isEmpty()) return;
  DBGridEh1->dropCell();
  DBGridEh1->setFocus();
  if (DataSetDJ.state() == RecordSet::State::Insert && !DataSetDJ.isModified()) {
    DataSetDJ.cancel();
    return;
  }
  DataSetDJ.remove();
  gridChange();
}

void TF2101_1::AllChange() {
  ProductEditor::AllChange();
  if (!loading() && singleUnit_ && focusWidget() && unitPages_->isAncestorOf(focusWidget()))
    typedSingle_ = true;
}

void TF2101_1::gridChange() {
  if (loading()) return;
  typedInGrid_ = true;
  AllChange();
}

bool TF2101_1::hasUnsavedInput() const {
  return ProductEditor::hasUnsavedInput() || (!isReadOnly() && DataSetDJ.isOpen() && DataSetDJ.isModified());
}

void TF2101_1::FormKeyDown(QKeyEvent* event) {
  if (event->key() == Qt::Key_F6) {
    event->accept();
    if (!takeCells()) return;
    const bool wasInUnits = focusWidget() && unitPages_->isAncestorOf(focusWidget());
    setSingleUnit(!singleUnit_);
    if (wasInUnits) (singleUnit_ ? static_cast<QWidget*>(lookupEdit(u"dw_id"_s)) : DBGridEh1)->setFocus();
  } else {
    ProductEditor::FormKeyDown(event);
  }
}

}  // namespace goodsbook
