#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "host/data/database.h"
#include "host/export.h"

namespace goodsbook {

struct SqlSet {
  std::vector<QString> columns;                           // as named in the select list
  std::vector<std::vector<std::optional<QString>>> rows;  // texts as valueText() gives them, nothing for NULL
};

// All that a batch answered, as texts.
struct SqlSets {
  std::vector<SqlSet> sets;
  std::vector<qint64> counts;    // rows written, of each statement that gives no set
  std::vector<QString> notices;  // texts of messages that are no errors
};

// Runs a batch and gathers its answers. EDatabaseError when it fails; nothing of it stays then.
GOODSBOOKHOST_EXPORT SqlSets runSql(Database& database, const QString& batch,
                                    Database::Permission permission);

// Reads the rows of one select, without a transaction of its own.
GOODSBOOKHOST_EXPORT SqlSet readSql(Database& database, const QString& select);

}  // namespace goodsbook
