#pragma once

#include "products/published.h"
#include "products/quick_editor.h"

namespace goodsbook {

// The quick product editor: retail, member and wholesale price. Published for other modules.
class GOODSBOOK_PUBLISHED TF2101A_1 : public QuickProductEditor {
  Q_OBJECT

 public:
  Q_INVOKABLE explicit TF2101A_1(QWidget* owner = nullptr);
};

}  // namespace goodsbook
