#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

#include "engine/row.h"
#include "host/export.h"

// How values read outside the program: in the answers of the sql command and of the driver, in exports.
namespace goodsbook {

// The shortest decimal text that reads back as the same number: "3.5", "3", "0.1". Plain digits wherever they
// are readable, an exponent only below 1e-6 and from 1e17 on. No negative zero.
GOODSBOOKHOST_EXPORT QString floatText(double value);

// Milliseconds since 1900-01-01 to "2026-11-20 10:11:12", with ".345" only where there are milliseconds.
GOODSBOOKHOST_EXPORT QString dateTimeText(qint64 milliseconds);

// The same moment on the wall clock, and back. Time zones play no part.
GOODSBOOKHOST_EXPORT QDateTime toDateTime(qint64 milliseconds);
GOODSBOOKHOST_EXPORT qint64 fromDateTime(const QDateTime& dateTime);

// The text of one value of a row: a bit as "1" or "0", bytes as "0x…" in upper-case digits; nothing for NULL.
GOODSBOOKHOST_EXPORT std::optional<QString> valueText(const engine::Row& row, int column, engine::Type type);

}  // namespace goodsbook
