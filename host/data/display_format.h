#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

// A number by a format of 0 (a digit that is always there), # (one that is there if needed), a point and a
// comma for groups of three: "0.00", "0.000000", "#,##0.00", "0.##". Other characters before and behind stay
// as they are. Rounds halves away from zero on the decimal digits that the number shows: 2.675 by "0.00" is
// "2.68".
GOODSBOOKHOST_EXPORT QString formatNumber(double value, const QString& format);

// How many digits a number shown by the format has behind its point at most: 2 for "#,##0.00", 0 for "0".
GOODSBOOKHOST_EXPORT int decimalsOf(const QString& format);

// A number as an edit is filled with it: by the format without groups of three where that text reads back as
// the same number, else with all its decimals. An edit's text is what is saved.
GOODSBOOKHOST_EXPORT QString editableNumber(double value, QString format);

// A date-time in milliseconds since 1900-01-01 by a Qt format, "yyyy-MM-dd HH:mm:ss" when the format is
// empty.
GOODSBOOKHOST_EXPORT QString formatDateTime(qint64 milliseconds, const QString& format);

}  // namespace goodsbook
