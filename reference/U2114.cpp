#include "reference/U2114.h"

#include "reference/U2114_1.h"
#include "reference/U2114f.h"

namespace goodsbook {

QPointer<TF2114> F2114;

TF2114::TF2114(QWidget* owner) : PartnerList(TF2114_1::partner(), owner) {}

TFrm_Base_Detail* TF2114::createEditor() {
  return new TF2114_1(this);
}

TFrm_Sys_Filter* TF2114::createFilter() {
  return new TF2114F(this);
}

}  // namespace goodsbook
