#pragma once

#include <QPointer>

#include "reference/code_table.h"

namespace goodsbook {

// Units of measure: the list.
class TF2103 : public CodeTableList {
  Q_OBJECT

 public:
  explicit TF2103(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Detail* createEditor() override;
};

extern QPointer<TF2103> F2103;  // the last one opened

}  // namespace goodsbook
