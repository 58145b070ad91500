#pragma once

#include "reference/tree_table.h"

namespace goodsbook {

// Departments: the editor.
class TF2108_1 : public TreeTableEditor {
  Q_OBJECT

 public:
  explicit TF2108_1(QWidget* owner = nullptr);

  static const TreeTable& table();
};

}  // namespace goodsbook
