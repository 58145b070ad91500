#pragma once

#include "host/export.h"
#include "host/forms/Base_common.h"

namespace goodsbook {

// A screen of values on a panel, without list and buttons.
class GOODSBOOKHOST_EXPORT TFrm_Base_Panel : public TFrm_Base_Common {
  Q_OBJECT

 public:
  using TFrm_Base_Common::TFrm_Base_Common;

  // Puts a number's text into the element `field`, in the price format; a text that is no number stays as it
  // is.
  void SetFloatText(const QString& field, const QString& text);
};

}  // namespace goodsbook
