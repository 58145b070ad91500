#include "reference/U2111.h"

#include "reference/U2111_1.h"

namespace goodsbook {

QPointer<TF2111> F2111;

TF2111::TF2111(QWidget* owner) : TreeTableList(TF2111_1::table(), owner) {}

TFrm_Base_Node_d* TF2111::createEditor() {
  return new TF2111_1(this);
}

}  // namespace goodsbook
