#pragma once

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_dialog.h"

namespace goodsbook {

// The change history of one product: each saved version with the time of the change.
class TF2101_2 : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  explicit TF2101_2(QWidget* owner = nullptr);
  void init(const QString& code);

 private:
  TDBGridEh* DBGridEh;
};

}  // namespace goodsbook
