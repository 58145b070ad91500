#pragma once

#include "host/data/server_attendant.h"
#include "host/export.h"

namespace goodsbook {

// Attendants for the window's thread: where a wait takes longer than a moment, a box over all windows says
// what for, takes the input and lets the windows be drawn; "取消" gives the wait up, where that is possible.
// What is waited for in other threads has none.
GOODSBOOKHOST_EXPORT AttendantMaker attendInWindow();

}  // namespace goodsbook
