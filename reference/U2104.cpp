#include "reference/U2104.h"

#include "reference/U2104_1.h"

namespace goodsbook {

QPointer<TF2104> F2104;

TF2104::TF2104(QWidget* owner) : TreeTableList(TF2104_1::table(), owner) {}

TFrm_Base_Node_d* TF2104::createEditor() {
  return new TF2104_1(this);
}

}  // namespace goodsbook
