#include "host/waiting.h"

namespace goodsbook {

int& Waiting::count() {
  static int waiting = 0;
  return waiting;
}

}  // namespace goodsbook
