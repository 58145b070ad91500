#pragma once

#include <QVariant>

#include "host/data/field.h"

// Values that are put into fields and read from them. A stored value is null (invalid) or of the field's
// type: QString, qlonglong, double, bool, QDateTime, QByteArray. A float that was typed may also be stored as
// the text that was typed: such a cell shows and hands on what the user wrote ("0.50"), not what a number
// would make of it.
namespace goodsbook {

// What is stored for `value`. Throws EDatabaseError 245 with a text for the user when it cannot be converted.
QVariant toStored(const Field& field, const QVariant& value);

// The value by the field's type, a typed number as double.
QVariant fromStored(FieldType type, const QVariant& stored);

// The text that is shown; `format` replaces the field's display format unless it is empty. A typed number
// stays as typed.
QString shownText(const Field& field, const QVariant& stored, const QString& format);

bool sameStored(const QVariant& a, const QVariant& b);

}  // namespace goodsbook
