#include "reference/U2125.h"

#include "reference/U2125_1.h"

namespace goodsbook {

QPointer<TF2125> F2125;

TF2125::TF2125(QWidget* owner) : CodeTableList(TF2125_1::table(), owner) {}

TFrm_Base_Detail* TF2125::createEditor() {
  return new TF2125_1(this);
}

}  // namespace goodsbook
