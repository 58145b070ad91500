#include "products/U2101a_3.h"

namespace goodsbook {

TF2101A_3::TF2101A_3(QWidget* owner) : QuickProductEditor(true, owner) {}

}  // namespace goodsbook
