#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "host/data/database.h"
#include "host/export.h"

namespace goodsbook {

struct CopiedTable {
  QString name;
  qint64 rows = 0;
};

// Told between blocks: the table and its rows so far. False ends the copy; nothing stays then.
using CopyProgress = std::function<bool(const QString& table, qint64 rows)>;

// Brings every row of all tables from one database to another one, in one transaction, self-made numbers
// included. Both have the tables of this program; the other one holds no data yet but the user ADMIN.
// Afterwards every table is read in both and compared by the number of its rows and by the sum over all
// values of all rows; where they differ, nothing stays. EDatabaseError.
GOODSBOOKHOST_EXPORT std::vector<CopiedTable> copyDatabase(Database& from, Database& to,
                                                           const CopyProgress& progress = {});

}  // namespace goodsbook
