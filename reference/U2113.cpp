#include "reference/U2113.h"

#include "reference/U2113_1.h"
#include "reference/U2113f.h"

namespace goodsbook {

QPointer<TF2113> F2113;

TF2113::TF2113(QWidget* owner) : PartnerList(TF2113_1::partner(), owner) {}

TFrm_Base_Detail* TF2113::createEditor() {
  return new TF2113_1(this);
}

TFrm_Sys_Filter* TF2113::createFilter() {
  return new TF2113F(this);
}

}  // namespace goodsbook
