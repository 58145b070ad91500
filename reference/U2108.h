#pragma once

#include <QPointer>

#include "reference/tree_table.h"

namespace goodsbook {

// Departments: the tree.
class TF2108 : public TreeTableList {
  Q_OBJECT

 public:
  explicit TF2108(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Node_d* createEditor() override;
};

extern QPointer<TF2108> F2108;  // the last one opened

}  // namespace goodsbook
