#include "reference/U2124.h"

#include "reference/U2124_1.h"

namespace goodsbook {

QPointer<TF2124> F2124;

TF2124::TF2124(QWidget* owner) : CodeTableList(TF2124_1::table(), owner) {}

TFrm_Base_Detail* TF2124::createEditor() {
  return new TF2124_1(this);
}

}  // namespace goodsbook
