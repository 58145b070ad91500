#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook::Zpy {

// Pinyin initials, upper case: letters and digits stay, other signs are dropped, characters give the first
// letter of their reading; frequent words whose reading depends on the word come from a table (银行 YH, 重庆
// CQ).
GOODSBOOKHOST_EXPORT QString GetPY(const QString& text);

}  // namespace goodsbook::Zpy
