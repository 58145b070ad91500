#pragma once

#include <QString>
#include <optional>
#include <span>
#include <vector>

#include "host/export.h"

namespace goodsbook {

class TFrm_Base_Common;

// What the host knows of the tables behind the screens, beside the statements that these send.

// The rows of `list` that name a row of `master` by its key in table.column.
struct Reference {
  QLatin1StringView master, table, column;
  QStringView list;  // as users call it
};
GOODSBOOKHOST_EXPORT std::span<const Reference> references();

// Rows that are edited together with their master row.
struct OwnedRows {
  QLatin1StringView master, table, column, rowKey;
  QLatin1StringView mark;  // set in the one row that lists show with the master row
  QStringView list;
};
GOODSBOOKHOST_EXPORT const OwnedRows* ownedRows(const QString& master);

// Columns of a table that other programs keep (stock, costs) and no editor writes.
GOODSBOOKHOST_EXPORT std::span<const QLatin1StringView> keptByOthers(const QString& table);

// Where a screen's rows are stored: the table and the key column that its delete statement names.
struct RowPlace {
  QString table, keyColumn;
};
GOODSBOOKHOST_EXPORT std::optional<RowPlace> rowPlaceOf(const TFrm_Base_Common& screen);

}  // namespace goodsbook
