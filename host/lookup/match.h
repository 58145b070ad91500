#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

// How well something with a code, a name and its initials answers what was typed, without regard to case: 0
// the code itself, then one of the texts, the head of one, a part of one; negative for not at all.
GOODSBOOKHOST_EXPORT int matchRank(const QString& code, const QString& name, const QString& initials,
                                   const QString& typed);

}  // namespace goodsbook
