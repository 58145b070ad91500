#pragma once

#include <QPointer>

#include "reference/tree_table.h"

namespace goodsbook {

// Sales regions: the tree.
class TF2111 : public TreeTableList {
  Q_OBJECT

 public:
  explicit TF2111(QWidget* owner = nullptr);

 protected:
  TFrm_Base_Node_d* createEditor() override;
};

extern QPointer<TF2111> F2111;  // the last one opened

}  // namespace goodsbook
