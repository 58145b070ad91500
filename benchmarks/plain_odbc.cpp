#include "benchmarks/plain_odbc.h"

#include <sql.h>
#include <sqlext.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace goodsbook::benchmarks {
namespace {

constexpr SQLULEN blockRows = 500;

void require(SQLRETURN code, const char* what) {
  if (SQL_SUCCEEDED(code)) return;
  std::fprintf(stderr, "ODBC: %s failed\n", what);
  std::exit(1);
}

SQLWCHAR* wide(const std::u16string& text) {
  return reinterpret_cast<SQLWCHAR*>(const_cast<char16_t*>(text.data()));
}

SQLPOINTER number(SQLULEN value) {
  return reinterpret_cast<SQLPOINTER>(value);
}

struct Column {
  std::vector<char> values;
  std::vector<SQLLEN> lengths;
};

SQLSMALLINT fetchedAs(SQLSMALLINT type) {
  switch (type) {
    case SQL_BIT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return SQL_C_SBIGINT;
    case SQL_DOUBLE:
    case SQL_FLOAT:
      return SQL_C_DOUBLE;
    case SQL_TYPE_TIMESTAMP:
      return SQL_C_TYPE_TIMESTAMP;
    default:
      return SQL_C_WCHAR;
  }
}

SQLULEN widthOf(SQLSMALLINT type, SQLULEN characters) {
  if (type == SQL_C_WCHAR) return (characters + 1) * sizeof(SQLWCHAR);
  return type == SQL_C_TYPE_TIMESTAMP ? sizeof(SQL_TIMESTAMP_STRUCT) : sizeof(std::int64_t);
}

}  // namespace

PlainOdbc::PlainOdbc(const std::u16string& connectionText) {
  require(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_), "environment");
  SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, number(SQL_OV_ODBC3), 0);
  require(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_), "connection");
  require(SQLDriverConnectW(connection_, nullptr, wide(connectionText), SQL_NTS, nullptr, 0, nullptr,
                            SQL_DRIVER_NOPROMPT),
          "connecting");
}

PlainOdbc::~PlainOdbc() {
  SQLDisconnect(connection_);
  SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

std::int64_t PlainOdbc::readAll(const std::u16string& select) {
  SQLHANDLE statement = nullptr;
  require(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement), "statement");
  require(SQLExecDirectW(statement, wide(select), SQL_NTS), "select");
  SQLSMALLINT count = 0;
  require(SQLNumResultCols(statement, &count), "columns");
  SQLULEN fetched = 0;
  SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, number(blockRows), 0);
  SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
  std::vector<Column> columns(static_cast<std::size_t>(count));
  for (SQLSMALLINT i = 0; i < count; ++i) {
    std::array<SQLWCHAR, 128> name{};
    SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    require(SQLDescribeColW(statement, static_cast<SQLUSMALLINT>(i + 1), name.data(),
                            static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits, &nullable),
            "describing");
    Column& column = columns[static_cast<std::size_t>(i)];
    const SQLSMALLINT as = fetchedAs(type);
    const SQLULEN width = widthOf(as, size);
    column.values.resize(width * blockRows);
    column.lengths.resize(blockRows);
    require(SQLBindCol(statement, static_cast<SQLUSMALLINT>(i + 1), as, column.values.data(),
                       static_cast<SQLLEN>(width), column.lengths.data()),
            "binding");
  }
  std::int64_t rows = 0;
  while (SQL_SUCCEEDED(SQLFetch(statement))) rows += static_cast<std::int64_t>(fetched);
  SQLFreeHandle(SQL_HANDLE_STMT, statement);
  return rows;
}

}  // namespace goodsbook::benchmarks
