#pragma once

#include "reference/code_table.h"

namespace goodsbook {

// Delivery methods: the editor.
class TF2123_1 : public CodeTableEditor {
  Q_OBJECT

 public:
  explicit TF2123_1(QWidget* owner = nullptr);

  static const CodeTable& table();
};

}  // namespace goodsbook
