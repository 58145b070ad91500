#pragma once

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_dialog.h"
#include "host/forms/row_guard.h"

namespace goodsbook {

// Selling prices of a unit row per warehouse. OK saves at once and replaces all of them.
class TF2101_SJ : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  explicit TF2101_SJ(QWidget* owner = nullptr);
  void init(const QString& adw);
  void showOnly();  // nothing can be changed or saved

 protected:
  void btn_okClick() override;
  bool hasUnsavedInput() const override;

 private:
  void bsSkinButton1Click();
  void requirePrice(int row, const QString& field);  // empty or a number; the cell gets the focus otherwise

  TDBGridEh* DBGridEh;
  RecordSet AdoQry_Main;  // the prices as typed: what is text "0" is not saved, "0.00" is
  QString adw_;
  RowGuard guard_;
};

}  // namespace goodsbook
