#include "reference/U2108.h"

#include "reference/U2108_1.h"

namespace goodsbook {

QPointer<TF2108> F2108;

TF2108::TF2108(QWidget* owner) : TreeTableList(TF2108_1::table(), owner) {}

TFrm_Base_Node_d* TF2108::createEditor() {
  return new TF2108_1(this);
}

}  // namespace goodsbook
