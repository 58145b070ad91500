#pragma once

#include "reference/code_table.h"

namespace goodsbook {

// Units of measure: the editor.
class TF2103_1 : public CodeTableEditor {
  Q_OBJECT

 public:
  explicit TF2103_1(QWidget* owner = nullptr);

  static const CodeTable& table();
};

}  // namespace goodsbook
