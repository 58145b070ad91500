#pragma once

#include "host/export.h"
#include "host/forms/Base_condition.h"

namespace goodsbook {

// The filter dialog of a list. The list shows it, and on result 1 loads again with conditionText and shows
// displayText beside its rows. What was typed stays from one opening to the next.
class GOODSBOOKHOST_EXPORT TFrm_Sys_Filter : public TFrm_Base_Condition {
  Q_OBJECT

 public:
  explicit TFrm_Sys_Filter(QWidget* owner = nullptr);

  virtual void InitForm();  // once, by the list, after it was created

 protected:
  // The base handler checks the fields; an override builds the two texts and ends with setModalResult(1).
  void btn_okClick() override;
  virtual void InitFocu();  // where the focus goes on opening: the first field
  void showEvent(QShowEvent* event) override;
};

}  // namespace goodsbook
