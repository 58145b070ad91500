#pragma once

#include <QPointer>

#include "reference/tree_table.h"

namespace goodsbook {

// Warehouses: the tree.
class TF2107 : public TreeTableList {
  Q_OBJECT

 public:
  explicit TF2107(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Node_d* createEditor() override;
};

extern QPointer<TF2107> F2107;  // the last one opened

}  // namespace goodsbook
