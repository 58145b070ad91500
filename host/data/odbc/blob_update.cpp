#include "host/data/odbc/blob_update.h"

#include "host/data/odbc/odbc_connection.h"
#include "host/data/statement_text.h"

namespace goodsbook {
namespace {

QString nameFor(const Dialect& dialect, const QString& name) {
  return dialect.isTransactSql() ? quotedName(name) : name;
}

}  // namespace

int updateBlob(OdbcConnection& connection, const QString& table, const QString& field,
               const QString& keyField, const QString& keyValue, const QByteArray& bytes) {
  OdbcConnection::Statement statement(connection);
  const SQLHANDLE handle = statement.handle().get();
  SQLLEN length = bytes.isNull() ? SQL_NULL_DATA : bytes.size();
  // An empty value has a width of one to the drivers.
  const auto width = static_cast<SQLULEN>(std::max<qsizetype>(bytes.size(), 1));
  connection.check(
      SQLBindParameter(handle, 1, SQL_PARAM_INPUT, SQL_C_BINARY, SQL_LONGVARBINARY, width, 0,
                       const_cast<char*>(bytes.constData()), static_cast<SQLLEN>(width), &length),
      statement.handle());
  SQLLEN keyLength = static_cast<SQLLEN>(static_cast<std::size_t>(keyValue.size()) * sizeof(SQLWCHAR));
  const auto keyWidth = static_cast<SQLULEN>(std::max<qsizetype>(keyValue.size(), 1));
  connection.check(SQLBindParameter(handle, 2, SQL_PARAM_INPUT, SQL_C_WCHAR, SQL_WVARCHAR, keyWidth, 0,
                                    wide(keyValue), keyLength, &keyLength),
                   statement.handle());
  const Dialect& dialect = connection.dialect();
  const QString text = QStringLiteral("update %1 set %2=? where %3=?")
                           .arg(nameFor(dialect, table), nameFor(dialect, field), nameFor(dialect, keyField));
  connection.check(SQLExecDirectW(handle, wide(text), static_cast<SQLINTEGER>(text.size())),
                   statement.handle());
  SQLLEN rows = 0;
  connection.check(SQLRowCount(handle, &rows), statement.handle());
  // What is left unread would be cancelled with the statement, and a server that hears so rolls back.
  SQLRETURN more = SQL_SUCCESS;
  while ((more = SQLMoreResults(handle)) != SQL_NO_DATA) connection.check(more, statement.handle());
  return static_cast<int>(std::max<SQLLEN>(rows, 0));
}

}  // namespace goodsbook
