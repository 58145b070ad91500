#include "reference/U2103.h"

#include "reference/U2103_1.h"

namespace goodsbook {

QPointer<TF2103> F2103;

TF2103::TF2103(QWidget* owner) : CodeTableList(TF2103_1::table(), owner) {}

TFrm_Base_Detail* TF2103::createEditor() {
  return new TF2103_1(this);
}

}  // namespace goodsbook
