#include "host/forms/Base_panel.h"

#include "host/data/display_format.h"

namespace goodsbook {

void TFrm_Base_Panel::SetFloatText(const QString& field, const QString& text) {
  bool isNumber = false;
  const double value = text.toDouble(&isNumber);
  setText(field, isNumber ? QString::number(value, 'f', decimalsOf(G_PriceFormat)) : text);
}

}  // namespace goodsbook
