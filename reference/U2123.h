#pragma once

#include <QPointer>

#include "reference/code_table.h"

namespace goodsbook {

// Delivery methods: the list.
class TF2123 : public CodeTableList {
  Q_OBJECT

 public:
  explicit TF2123(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Detail* createEditor() override;
};

extern QPointer<TF2123> F2123;  // the last one opened

}  // namespace goodsbook
