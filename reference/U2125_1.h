#pragma once

#include "reference/code_table.h"

namespace goodsbook {

// Currencies: the editor.
class TF2125_1 : public CodeTableEditor {
  Q_OBJECT

 public:
  explicit TF2125_1(QWidget* owner = nullptr);

  static const CodeTable& table();
};

}  // namespace goodsbook
