#include "tests/odbc/raw_connection.h"

#include <sql.h>
#include <sqlext.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace goodsbook::test {
namespace {

SQLWCHAR* wide(const QString& text) {
  return reinterpret_cast<SQLWCHAR*>(const_cast<ushort*>(text.utf16()));
}

QString counted(qint64 number, const QString& word) {
  return u"%1 %2"_s.arg(number).arg(number == 1 ? word : word + u's');
}

QString told(SQLHANDLE statement, SQLRETURN code) {
  if (code == SQL_NO_DATA) return u"no data"_s;
  if (code == SQL_ERROR) {
    SQLINTEGER number = 0;
    SQLGetDiagRecW(SQL_HANDLE_STMT, statement, 1, nullptr, &number, nullptr, 0, nullptr);
    return u"error %1"_s.arg(number);
  }
  if (code == SQL_SUCCESS_WITH_INFO) return u"message"_s;
  SQLSMALLINT columns = 0;
  SQLNumResultCols(statement, &columns);
  if (columns > 0) return counted(columns, u"column"_s);
  SQLLEN rows = -1;
  SQLRowCount(statement, &rows);
  return counted(rows, u"row"_s);
}

}  // namespace

RawConnection::RawConnection(const QString& address) {
  SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
  SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
  const SQLRETURN code = SQLDriverConnectW(connection_, nullptr, wide(address), SQL_NTS, nullptr, 0, nullptr,
                                           SQL_DRIVER_NOPROMPT);
  if (!SQL_SUCCEEDED(code)) throw std::runtime_error("no connection: " + address.toStdString());
}

RawConnection::~RawConnection() {
  SQLDisconnect(connection_);
  SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

QStringList RawConnection::run(const QString& batch) {
  SQLHANDLE statement = nullptr;
  SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement);
  QStringList answers;
  SQLRETURN code = SQLExecDirectW(statement, wide(batch), static_cast<SQLINTEGER>(batch.size()));
  do {
    answers << told(statement, code);
    code = SQLMoreResults(statement);
  } while (code != SQL_NO_DATA && answers.size() < 100);
  SQLFreeHandle(SQL_HANDLE_STMT, statement);
  return answers;
}

}  // namespace goodsbook::test
