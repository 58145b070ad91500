#include "reference/U2107.h"

#include "reference/U2107_1.h"

namespace goodsbook {

QPointer<TF2107> F2107;

TF2107::TF2107(QWidget* owner) : TreeTableList(TF2107_1::table(), owner) {}

TFrm_Base_Node_d* TF2107::createEditor() {
  return new TF2107_1(this);
}

}  // namespace goodsbook
