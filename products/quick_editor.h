#pragma once

#include "products/product_editor.h"

namespace goodsbook {

class TF2101A_2;

// The one-page product editor with one unit: what its two published variants share. It edits a row of the
// product list, or (SetStatus) makes a product while a purchase is entered and appends a line for it to the
// document's lines.
class QuickProductEditor : public ProductEditor {
  Q_OBJECT

 public:
  // `lines` are a purchase document's lines with the fields of purchaseLineFields(GPARAM28)
  // (purchase_entry.h). Returns at once; each saved product appends one posted line. std::invalid_argument
  // when a field is missing.
  void SetStatus(RecordSet& lines) override;

 protected:
  QuickProductEditor(bool hasReferencePrices, QWidget* owner);
  void RefreshData() override;
  void SaveData() override;
  void showSaved() override;

 private:
  void buildFields();
  void applyPriceFormats();
  void hideLargeUnits();
  void enablePurchaseFields(bool on);

  void fillFromRow();
  void fillForAdd();
  void showLastPurchasePrice();

  void TMExit();
  TF2101A_2& barcodePrompt();
  void TMChange();
  void vipsjExit();

  void checkCodes();
  void checkPrices();
  void drawNumber();
  void takeCodeAsBarcode();  // where there is none
  QString headerStatements() const;
  QString unitStatement() const;
  QString referencePrices(
      const QString& form) const;  // "{name}" and "{text}" of each, joined; empty without them
  void appendPurchaseLine();
  void reckonPurchase();
  void writeBack();

  const bool hasReferencePrices_;
  bool fromDocument_ = false;
  bool barcodeDirty_ = true;  // the barcode was not looked up since it was changed
};

}  // namespace goodsbook
