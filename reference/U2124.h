#pragma once

#include <QPointer>

#include "reference/code_table.h"

namespace goodsbook {

// Payment methods: the list.
class TF2124 : public CodeTableList {
  Q_OBJECT

 public:
  explicit TF2124(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Detail* createEditor() override;
};

extern QPointer<TF2124> F2124;  // the last one opened

}  // namespace goodsbook
