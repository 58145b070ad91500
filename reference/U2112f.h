#pragma once

#include "reference/quick_filter.h"

namespace goodsbook {

// Staff: the filter.
class TF2112F : public QuickFilterDialog {
  Q_OBJECT

 public:
  explicit TF2112F(QWidget* owner = nullptr);
};

}  // namespace goodsbook
