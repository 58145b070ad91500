#pragma once

#include <QPointer>

#include "reference/tree_table.h"

namespace goodsbook {

// Product categories: the tree.
class TF2104 : public TreeTableList {
  Q_OBJECT

 public:
  explicit TF2104(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Node_d* createEditor() override;
};

extern QPointer<TF2104> F2104;  // the last one opened

}  // namespace goodsbook
