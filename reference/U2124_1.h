#pragma once

#include "reference/code_table.h"

namespace goodsbook {

// Payment methods: the editor.
class TF2124_1 : public CodeTableEditor {
  Q_OBJECT

 public:
  explicit TF2124_1(QWidget* owner = nullptr);

  static const CodeTable& table();
};

}  // namespace goodsbook
