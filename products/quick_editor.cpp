#include "products/quick_editor.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <stdexcept>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/session.h"
#include "products/U2101_2.h"
#include "products/U2101a_2.h"
#include "products/purchase_entry.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QuickProductEditor::QuickProductEditor(bool hasReferencePrices, QWidget* owner)
    : TFrm_Base_Detail(owner), hasReferencePrices_(hasReferencePrices) {
  setWindowTitle(tr("商品基本资料"));
  buildFields();
  FormCreate();
  applyPriceFormats();
  enablePurchaseFields(false);
  if (!GPARAM28) hideLargeUnits();
}

void QuickProductEditor::enablePurchaseFields(bool on) {
  for (const QString& name : {u"Label13"_s, u"J"_s, u"L"_s, u"JJ"_s}) {
    elementNamed(name)->setVisible(on);
    elementNamed(name)->setEnabled(on);
  }
}

void QuickProductEditor::hideLargeUnits() {
  for (const QString& name : {u"Label10"_s, u"Label12"_s, u"dw_zh"_s, u"Edit4"_s, u"J"_s})
    elementNamed(name)->hide();
  setText(u"Label13"_s, tr("  本次进货（数量/单价)"));
}

void QuickProductEditor::SetStatus(RecordSet& lines) {
  for (const Field& field : purchaseLineFields()) {
    if (!lines.hasField(field.name)) throw std::invalid_argument("no field " + field.name.toStdString());
  }
  enablePurchaseFields(true);
  moduleCode_ = u"101"_s;
  fromDocument_ = true;
  TFrm_Base_Detail::SetStatus(lines);
  if (!GPARAM28) hideLargeUnits();
}

void QuickProductEditor::RefreshData() {
  setLoading(true);
  BTN_CHANGE->setVisible(!isAdding());
  barcodeDirty_ = isAdding();
  firstFocus = isAdding() && !GPARAM0 ? u"Edit1"_s : u"TM"_s;
  lockedFields.clear();
  if (GPARAM0 && isAdding()) {
    setText(u"Edit1"_s, tr("自动编号"));
    lockedFields = u"EDIT1"_s;
  }
  if (mode() == "Edit"_L1) lockedFields = u"EDIT1"_s;
  if (mode() == "Add"_L1) {
    fillForAdd();
  } else {
    fillFromRow();
  }
  TFrm_Base_Detail::RefreshData();
  edit(u"Edit1"_s)->setEnabled(!GPARAM0);
  for (const QString& name : {u"PFJ"_s, u"Label14"_s}) elementNamed(name)->setVisible(GPARAM26 == "PFJ"_L1);
}

void QuickProductEditor::fillFromRow() {
  const QString before = text(u"Edit1"_s);
  const QString day = u"yyyy-MM-dd"_s;
  loadFields();
  const bool copies = mode() == "CopyAdd"_L1;
  if (copies) setText(u"DJ"_s, u"0"_s);
  if (copies && GPARAM0) setText(u"Edit1"_s, before);
  setText(u"BDATE"_s, listRows().value(u"BDATE"_s).toDateTime().toString(day));
  const QDateTime changed = listRows().value(u"EDATE"_s).toDateTime();
  setText(u"EDATE"_s, changed.isValid() && !copies ? changed.toString(day) : QString());
  showLastPurchasePrice();
}

void QuickProductEditor::showLastPurchasePrice() {
  if (costRight() != "1"_L1) {
    setText(u"JJJJ"_s, tr("无权查看"));
    return;
  }
  opensql(
      AdoQry_Tmp, moduleCode_,
      u"SELECT TOP 1 D8202A.DJ FROM D8202A INNER JOIN D8202 ON D8202A.NOID = D8202.NOID WHERE D8202A.WL_ID = '"_s +
          listRows().text(u"WL_ID"_s) + u"' ORDER BY D8202.BDATE DESC"_s);
  setText(u"JJJJ"_s, AdoQry_Tmp.isEmpty() ? QString() : AdoQry_Tmp.text(u"DJ"_s));
}

void QuickProductEditor::fillForAdd() {
  // The number stays: without automatic numbers the next product starts from the one before.
  for (const QString& name : {u"Edit2"_s, u"Edit3"_s, u"NOTE"_s, u"JJJJ"_s, u"EDATE"_s, u"TM"_s, u"CD"_s})
    setText(name, {});
  setText(u"user_name"_s, G_UserName);
  setText(u"BDATE"_s, Session::current().desktop().now().toString(u"yyyy-MM-dd HH:mm:ss "_s));
  setChecked(u"check_kc"_s, true);
  setChecked(u"YS"_s, true);
  if (!fromDocument_) {
    for (const QString& name : {u"dw_id"_s, u"DW_NAME"_s, u"CLASS_ID"_s, u"CLASS_NAME"_s}) setText(name, {});
  }
  for (const QString& name : {u"SJ"_s, u"vipsj"_s, u"PFJ"_s, u"CGJ"_s, u"DJ"_s, u"J"_s, u"L"_s, u"JJ"_s})
    setText(name, u"0"_s);
  if (hasReferencePrices_) {
    for (const QString& name : {u"PFJ1"_s, u"PFJ2"_s, u"PFJ3"_s, u"PFJ4"_s}) setText(name, u"0"_s);
  }
  setText(u"dw_zh"_s, u"1"_s);
}

void QuickProductEditor::Edit1Exit() {
  TCustomDBEditEh* number = edit(u"Edit1"_s);
  if (GPARAM0 && number->text().trimmed().isEmpty()) {
    if (GPARAM1 && text(u"CLASS_ID"_s).trimmed().isEmpty()) return;
    setText(u"Edit1"_s, GetNOID(moduleCode_, GPARAM1 ? text(u"CLASS_ID"_s) : QString(), GPARAM2));
  }
  CheckBlankInstr(number, tr("商品编号"));
  CheckBlank(number);
  CheckText(number, tr("商品编号"));
  opensql(AdoQry_Tmp, moduleCode_, u"select wl_id from D1801 where wl_id='"_s + number->text() + u'\'');
  if (AdoQry_Tmp.isEmpty()) return;
  DISPINFO(tr("商品编号已登记!"), 5);
  throw EAbort();
}

void QuickProductEditor::TMExit() {
  const QString barcode = text(u"TM"_s);
  if (barcode.trimmed().isEmpty() || !isAdding() || !barcodeDirty_) return;
  barcodeDirty_ = false;
  TF2101A_2& prompt = barcodePrompt();
  prompt.init(barcode);
  if (prompt.rows().isEmpty()) return;
  if (prompt.exec() != QDialog::Accepted) throw EAbort();
  const RecordSet& chosen = prompt.rows();
  setText(u"Edit2"_s, chosen.text(u"wl_name"_s));
  setText(u"Edit3"_s, chosen.text(u"wl_gg"_s));
  setText(u"CD"_s, chosen.text(u"cd"_s));
  setText(u"DW_NAME"_s, chosen.text(u"dw_name"_s));  // the unit's code stays as it was
}

// One for all editors, so that the offline library is opened and counted once. The outermost window owns it
// and lives as long as the program's session works.
TF2101A_2& QuickProductEditor::barcodePrompt() {
  QWidget* outermost = this;
  while (QWidget* owner = outermost->parentWidget()) outermost = owner;
  auto* prompt = outermost->findChild<TF2101A_2*>({}, Qt::FindDirectChildrenOnly);
  return prompt ? *prompt : *new TF2101A_2(outermost);
}

void QuickProductEditor::TMChange() {
  barcodeDirty_ = true;
  AllChange();
}

void QuickProductEditor::vipsjExit() {
  for (const QString& name : {u"vipsj"_s, u"PFJ"_s}) {
    if (text(name).isEmpty()) setText(name, text(u"SJ"_s));
  }
}

void QuickProductEditor::BTN_CHANGEClick() {
  if (isAdding()) {
    DISPINFO(tr("【增加】的状态下无更改记录,您应该在【修改/查看】状态下浏览更改记录!"), 5);
    throw EAbort();
  }
  TF2101_2 history(this);
  history.init(text(u"Edit1"_s));
  history.exec();
}

void QuickProductEditor::FormKeyDown(QKeyEvent* event) {
  if (event->key() == Qt::Key_F11) {
    event->accept();
    BTN_CHANGEClick();
    return;
  }
  TFrm_Base_Detail::FormKeyDown(event);
}

}  // namespace goodsbook
