#pragma once

#include <QDateTime>
#include <QString>

#include "host/export.h"

namespace goodsbook {

class Database;

// The numbers of new records, kept in SYS_NOID: one line for each module, prefix and serial length with the
// last serial drawn. Drawing holds the database's write lock, so that no two programs draw the same.
//
// serialLength > 0: prefix and the next serial, zeros in front; codes that the module's table already has are
// skipped. EDatabaseError when no number of that length is left. serialLength 0: prefix, year and month of
// `now` ("2611") and a serial of at least six digits that never starts again.
GOODSBOOKHOST_EXPORT QString drawNumber(Database& database, const QString& moduleCode, const QString& prefix,
                                        int serialLength, const QDateTime& now);

}  // namespace goodsbook
