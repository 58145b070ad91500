#pragma once

#include "host/forms/Base_detail.h"
#include "host/forms/field_set.h"

class QPushButton;

namespace goodsbook {

// What the full product editor and the quick ones have in common: the fields of a product and its main unit,
// the check of a new code, the record of changes, and statements of the save.
class ProductEditor : public TFrm_Base_Detail {
  Q_OBJECT

 protected:
  explicit ProductEditor(QWidget* owner);

  // The declaration of one of Edit1 (code), Edit2 (name), Edit3 (specification), CD (origin), CLASS_ID,
  // dw_id, TM (barcode), YS (valid), check_kc (negative stock) and NOTE; `sameRow`: behind the field before
  // it.
  FieldSpec productField(const QString& name, bool sameRow = false);
  void attachPickers();     // to CLASS_ID and dw_id
  void makeChangeButton();  // BTN_CHANGE, behind all fields in the tab order

  // Draws the number where one is due, and refuses a code that is ill-formed or known.
  virtual void Edit1Exit();
  void FormKeyDown(QKeyEvent* event) override;  // F11: the record of changes

  void showNew();                       // who makes a new product and when; valid, negative stock allowed
  void showDates(bool withLastChange);  // of the list's current row

  // Throws EAbort with `message` when negative stock is no longer to be allowed and there is some.
  void refuseWithdrawnNegativeStock(const QString& message);
  // The code has changed as the update before it says: the history's copy holds the values after the change.
  static QString historyStatement(const QString& code);
  // Whether negative stock is allowed: in all warehouses, or for a new product in the first one.
  QString stockStatement() const;
  // The number that a price's edit left in the database: an empty one is 0, but stays NULL where a new row
  // does not set it.
  QVariant savedNumber(const QString& element) const;
  void storeHeader();  // what all have of it, into the list's current row, without posting

  QPushButton* BTN_CHANGE = nullptr;

 private:
  void BTN_CHANGEClick();
  void refuseCodeWithUnits();
};

}  // namespace goodsbook
