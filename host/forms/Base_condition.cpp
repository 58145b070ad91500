#include "host/forms/Base_condition.h"

namespace goodsbook {

void TFrm_Base_Condition::resetCondition() {
  conditionText.clear();
  displayText.clear();
}

void TFrm_Base_Condition::GetData() {}

void TFrm_Base_Condition::btn_okClick() {
  TFrm_Base_Dialog::btn_okClick();
  resetCondition();
  GetData();
  setModalResult(1);
}

}  // namespace goodsbook
