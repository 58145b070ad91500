#pragma once

#include "reference/tree_table.h"

namespace goodsbook {

// Sales regions: the editor.
class TF2111_1 : public TreeTableEditor {
  Q_OBJECT

 public:
  explicit TF2111_1(QWidget* owner = nullptr);

  static const TreeTable& table();
};

}  // namespace goodsbook
