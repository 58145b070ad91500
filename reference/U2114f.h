#pragma once

#include "reference/quick_filter.h"

namespace goodsbook {

// Suppliers: the filter.
class TF2114F : public QuickFilterDialog {
  Q_OBJECT

 public:
  explicit TF2114F(QWidget* owner = nullptr);
};

}  // namespace goodsbook
