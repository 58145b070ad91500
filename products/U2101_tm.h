#pragma once

#include "host/forms/Base_dialog.h"
#include "host/forms/row_guard.h"

namespace goodsbook {

// Extra barcodes of a unit row, one a line. OK saves at once and replaces all of them.
class TF2101_TM : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  explicit TF2101_TM(QWidget* owner = nullptr);
  void init(const QString& adw);
  void showOnly();  // nothing can be changed or saved

 protected:
  void btn_okClick() override;
  bool hasUnsavedInput() const override;

 private:
  QString adw_;
  RowGuard guard_;
};

}  // namespace goodsbook
