#include "products/U2101a_1.h"

namespace goodsbook {

TF2101A_1::TF2101A_1(QWidget* owner) : QuickProductEditor(false, owner) {}

}  // namespace goodsbook
