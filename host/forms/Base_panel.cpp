#include "host/forms/Base_panel.h"

namespace goodsbook {

void TFrm_Base_Panel::SetFloatText(const QString& field, const QString& text) {
  bool isNumber = false;
  const double value = text.toDouble(&isNumber);
  const int places = std::max(0, static_cast<int>(G_PriceFormat.size()) - 2);
  setText(field, isNumber ? QString::number(value, 'f', places) : text);
}

}  // namespace goodsbook
