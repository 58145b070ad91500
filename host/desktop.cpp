#include "host/desktop.h"

namespace goodsbook {

Desktop::~Desktop() = default;

}  // namespace goodsbook
