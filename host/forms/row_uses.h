#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

class TFrm_Base_Common;

// The line under the question before deleting: which lists use the row with this key and how many of their
// rows (beyond 1000 only that), with the line break before it. Empty when none is known to, or the database
// cannot tell. The look-ups are the host's own.
GOODSBOOKHOST_EXPORT QString usesLine(const TFrm_Base_Common& screen, const QString& key);

}  // namespace goodsbook
