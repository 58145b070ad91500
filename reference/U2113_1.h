#pragma once

#include "reference/partner.h"

namespace goodsbook {

// Customers: the editor.
class TF2113_1 : public PartnerEditor {
  Q_OBJECT

 public:
  explicit TF2113_1(QWidget* owner = nullptr);

  static const Partner& partner();
};

}  // namespace goodsbook
