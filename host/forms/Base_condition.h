#pragma once

#include "host/export.h"
#include "host/forms/Base_dialog.h"

namespace goodsbook {

// A dialog that builds a condition: OK empties the texts, lets GetData put them together and closes with
// result 1.
class GOODSBOOKHOST_EXPORT TFrm_Base_Condition : public TFrm_Base_Dialog {
  Q_OBJECT

 public:
  using TFrm_Base_Dialog::TFrm_Base_Dialog;

  void resetCondition();  // both texts empty: the list shows everything again

 protected:
  virtual void GetData();  // by Condition_t; here nothing
  void btn_okClick() override;
};

}  // namespace goodsbook
