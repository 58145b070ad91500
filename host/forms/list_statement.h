#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

// The statement of a list with a condition: " Where " and the condition behind it, or in front of its GROUP
// BY, HAVING or ORDER BY; where it has a WHERE already " and " and the condition, either side in parentheses
// when it holds a bare OR. A blank condition changes nothing.
GOODSBOOKHOST_EXPORT QString withCondition(const QString& statement, const QString& condition);

}  // namespace goodsbook
