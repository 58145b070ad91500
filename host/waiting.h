#pragma once

#include "host/export.h"

namespace goodsbook {

// While one lives, the window's thread waits for work that goes on beside it and lets events through: the
// program is not idle. Used by that thread.
class GOODSBOOKHOST_EXPORT Waiting {
 public:
  Waiting() { ++count(); }
  ~Waiting() { --count(); }
  Waiting(const Waiting&) = delete;
  Waiting& operator=(const Waiting&) = delete;

  static bool isGoingOn() { return count() > 0; }

 private:
  static int& count();
};

}  // namespace goodsbook
