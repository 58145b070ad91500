#pragma once

#include <QJsonObject>

#include "host/data/errors.h"
#include "host/data/sql_sets.h"
#include "host/export.h"

// What a batch answered, for scripts: the answers of the sql command and of the driver.
namespace goodsbook {

// {"sets":[{"columns":[…],"rows":[[…],…]},…]}, values as texts, NULL as null.
GOODSBOOKHOST_EXPORT QJsonObject toJson(const SqlSets& answers);

// {"number":…,"severity":…,"line":…}; the text is the caller's to place.
GOODSBOOKHOST_EXPORT QJsonObject toJson(const EDatabaseError& error);

}  // namespace goodsbook
