#include "host/forms/Sys_filter.h"

#include <QShowEvent>

namespace goodsbook {

TFrm_Sys_Filter::TFrm_Sys_Filter(QWidget* owner) : TFrm_Base_Condition(owner) {}

void TFrm_Sys_Filter::InitForm() {
  resetCondition();
}

void TFrm_Sys_Filter::btn_okClick() {
  TFrm_Base_Dialog::btn_okClick();  // NOLINT(bugprone-parent-virtual-call): a filter makes its own condition
}

void TFrm_Sys_Filter::InitFocu() {
  focusFirstField();
}

void TFrm_Sys_Filter::showEvent(QShowEvent* event) {
  TFrm_Base_Condition::showEvent(event);
  if (!event->spontaneous()) guarded(this, [this] { InitFocu(); });
}

}  // namespace goodsbook
