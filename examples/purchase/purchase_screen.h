#pragma once

#include "host/controls/TDBGridEh.h"
#include "host/data/record_set.h"
#include "host/forms/Base_detail.h"
#include "host/forms/Base_dialog.h"

namespace example {

// The lines of a purchase. "新商品" makes a product that is not in the list yet, in a quick editor, which
// appends a line for it.
class PurchaseScreen : public goodsbook::TFrm_Base_Dialog {
  Q_OBJECT

 public:
  explicit PurchaseScreen(QWidget* owner = nullptr);

 protected:
  void FormKeyDown(QKeyEvent* event) override;

 private:
  void newProduct();

  goodsbook::RecordSet lines_;  // before the editor, which writes into them
  goodsbook::TDBGridEh* grid_;
  QPointer<goodsbook::TFrm_Base_Detail> editor_;
};

}  // namespace example
