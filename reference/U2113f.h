#pragma once

#include "reference/quick_filter.h"

namespace goodsbook {

// Customers: the filter.
class TF2113F : public QuickFilterDialog {
  Q_OBJECT

 public:
  explicit TF2113F(QWidget* owner = nullptr);
};

}  // namespace goodsbook
