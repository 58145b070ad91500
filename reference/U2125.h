#pragma once

#include <QPointer>

#include "reference/code_table.h"

namespace goodsbook {

// Currencies: the list.
class TF2125 : public CodeTableList {
  Q_OBJECT

 public:
  explicit TF2125(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Detail* createEditor() override;
};

extern QPointer<TF2125> F2125;  // the last one opened

}  // namespace goodsbook
