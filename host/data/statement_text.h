#pragma once

#include <QByteArray>
#include <QString>

#include "host/export.h"

// Literals and names for statements that the host itself makes, as every kind of database reads them.
namespace goodsbook {

GOODSBOOKHOST_EXPORT QString textLiteral(const QString& text);       // N'…', inner quotes doubled
GOODSBOOKHOST_EXPORT QString bytesLiteral(const QByteArray& bytes);  // 0x…, "null" for null bytes
GOODSBOOKHOST_EXPORT QString quotedName(const QString& name);        // [name]

}  // namespace goodsbook
