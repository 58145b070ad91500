#pragma once

#include "reference/tree_table.h"

namespace goodsbook {

// Product categories: the editor.
class TF2104_1 : public TreeTableEditor {
  Q_OBJECT

 public:
  explicit TF2104_1(QWidget* owner = nullptr);

  static const TreeTable& table();
};

}  // namespace goodsbook
