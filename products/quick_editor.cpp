#include "products/quick_editor.h"

#include <QPushButton>
#include <stdexcept>

#include "host/U_glo.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "products/U2101a_2.h"
#include "products/purchase_entry.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QuickProductEditor::QuickProductEditor(bool hasReferencePrices, QWidget* owner)
    : ProductEditor(owner), hasReferencePrices_(hasReferencePrices) {
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
  for (const Field& field : purchaseLineFields(GPARAM28)) {
    if (!lines.hasField(field.name)) throw std::invalid_argument("no field " + field.name.toStdString());
  }
  enablePurchaseFields(true);
  moduleCode_ = u"101"_s;
  fromDocument_ = true;
  ProductEditor::SetStatus(lines);
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
  ProductEditor::RefreshData();
  edit(u"Edit1"_s)->setEnabled(!GPARAM0);
  for (const QString& name : {u"PFJ"_s, u"Label14"_s}) elementNamed(name)->setVisible(GPARAM26 == "PFJ"_L1);
}

void QuickProductEditor::fillFromRow() {
  const QString before = text(u"Edit1"_s);
  loadFields();
  const bool copies = mode() == "CopyAdd"_L1;
  if (copies) setText(u"DJ"_s, u"0"_s);
  if (copies && GPARAM0) setText(u"Edit1"_s, before);
  showDates(!copies);
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
  for (const QString& name : {u"Edit2"_s, u"Edit3"_s, u"NOTE"_s, u"JJJJ"_s, u"TM"_s, u"CD"_s})
    setText(name, {});
  showNew();
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

}  // namespace goodsbook
