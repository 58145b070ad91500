#pragma once

#include "reference/partner.h"

namespace goodsbook {

// Suppliers: the editor.
class TF2114_1 : public PartnerEditor {
  Q_OBJECT

 public:
  explicit TF2114_1(QWidget* owner = nullptr);

  static const Partner& partner();
};

}  // namespace goodsbook
