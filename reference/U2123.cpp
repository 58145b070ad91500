#include "reference/U2123.h"

#include "reference/U2123_1.h"

namespace goodsbook {

QPointer<TF2123> F2123;

TF2123::TF2123(QWidget* owner) : CodeTableList(TF2123_1::table(), owner) {}

TFrm_Base_Detail* TF2123::createEditor() {
  return new TF2123_1(this);
}

}  // namespace goodsbook
