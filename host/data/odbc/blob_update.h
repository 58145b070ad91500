#pragma once

#include <QByteArray>
#include <QString>

namespace goodsbook {

class OdbcConnection;

// Writes bytes into one cell as a parameter, so that a picture of some megabytes is no statement text; null
// bytes write NULL. Gives the number of rows written. EDatabaseError.
int updateBlob(OdbcConnection& connection, const QString& table, const QString& field,
               const QString& keyField, const QString& keyValue, const QByteArray& bytes);

}  // namespace goodsbook
