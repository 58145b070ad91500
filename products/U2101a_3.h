#pragma once

#include "products/published.h"
#include "products/quick_editor.h"

namespace goodsbook {

// The quick product editor: with four reference selling prices. Published for other modules.
class GOODSBOOK_PUBLISHED TF2101A_3 : public QuickProductEditor {
  Q_OBJECT

 public:
  Q_INVOKABLE explicit TF2101A_3(QWidget* owner = nullptr);
};

}  // namespace goodsbook
