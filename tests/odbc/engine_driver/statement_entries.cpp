// Batches and what they answer, but for the rows.
#include <array>
#include <utility>

#include "engine/runtime/failure.h"
#include "tests/odbc/engine_driver/copy_out.h"
#include "tests/odbc/engine_driver/handles.h"
#include "tests/odbc/engine_driver/wide_text.h"

using namespace goodsbook::engine_driver;
using goodsbook::engine::Column;
using goodsbook::engine::Type;

namespace {

std::string literal(const Parameter& parameter) {
  if (*parameter.length == SQL_NULL_DATA) return "NULL";
  const auto bytes = static_cast<std::size_t>(*parameter.length);
  if (parameter.type == SQL_C_WCHAR) {
    const std::string text =
        toUtf8({static_cast<const char16_t*>(parameter.value), bytes / sizeof(SQLWCHAR)});
    std::string quoted = "N'";
    for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + "'";
  }
  if (parameter.type != SQL_C_BINARY) goodsbook::engine::failUnsupported("这种参数");
  static constexpr std::string_view digits = "0123456789ABCDEF";
  std::string hex = "0x";
  hex.reserve(2 * bytes + 2);
  for (std::size_t i = 0; i < bytes; ++i) {
    const unsigned byte = static_cast<const unsigned char*>(parameter.value)[i];
    hex += digits[byte >> 4U];
    hex += digits[byte & 15U];
  }
  return hex;
}

// The values in place of the question marks outside of quotes.
std::string withParameters(const std::string& batch, const std::vector<Parameter>& parameters) {
  std::string text;
  std::size_t next = 0;
  char closing = 0;
  for (const char c : batch) {
    if (closing != 0) {
      if (c == closing) closing = 0;
    } else if (c == '\'' || c == '"') {
      closing = c;
    } else if (c == '[') {
      closing = ']';
    } else if (c == '?' && next < parameters.size()) {
      text += literal(parameters[next++]);
      continue;
    }
    text += c;
  }
  return text;
}

struct Described {
  SQLSMALLINT type;
  SQLULEN size;  // 0: no limit
  SQLSMALLINT digits;
};

// An expression has no width of its own in the engine; on a server it has the widest that is no "max".
SQLULEN widthOf(const Result& result, std::size_t column) {
  constexpr SQLULEN widest = 4000;
  if (result.columns[column].width > 0) return static_cast<SQLULEN>(result.columns[column].width);
  for (std::size_t row = 0; row < result.rowCount(); ++row) {
    const auto* text = std::get_if<std::u16string>(&result.at(row, column));
    if (text != nullptr && text->size() > widest) return 0;
  }
  return widest;
}

Described described(const Result& result, std::size_t column) {
  switch (result.columns[column].type) {
    case Type::Bit:
      return {SQL_BIT, 1, 0};
    case Type::Integer:
      return {SQL_BIGINT, 19, 0};
    case Type::Float:
      return {SQL_FLOAT, 53, 0};
    case Type::DateTime:
      return {SQL_TYPE_TIMESTAMP, 23, 3};
    case Type::Blob:
      return {SQL_VARBINARY, 0, 0};
    case Type::Text:
      break;
  }
  return {SQL_WVARCHAR, widthOf(result, column), 0};
}

SQLRETURN unknownColumn(Statement& statement) {
  statement.tell(u"07009", "no such column");
  return SQL_ERROR;
}

}  // namespace

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length) {
  return entered<Statement>(handle, [&](Statement& statement) {
    statement.close();
    const std::string batch = withParameters(toUtf8(wideText(text, length)), statement.parameters);
    statement.results = statement.connection.session->run(batch);
    return statement.arriveAt(0);
  });
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT handle) {
  return entered<Statement>(handle, [](Statement& statement) -> SQLRETURN {
    if (statement.result() == nullptr) return SQL_NO_DATA;
    const SQLRETURN code = statement.arriveAt(statement.current + 1);
    if (statement.result() == nullptr) statement.close();
    return code;
  });
}

SQLRETURN SQL_API SQLRowCount(SQLHSTMT handle, SQLLEN* rows) {
  return entered<Statement>(handle, [&](Statement& statement) {
    const Result* result = statement.result();
    *rows = result != nullptr && result->kind == Result::Kind::Count ? result->count : -1;
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* columns) {
  return entered<Statement>(handle, [&](Statement& statement) {
    const Result* rows = statement.rows();
    *columns = rows == nullptr ? SQLSMALLINT{0} : static_cast<SQLSMALLINT>(rows->columns.size());
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT room,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                  SQLSMALLINT* nullable) {
  return entered<Statement>(handle, [&](Statement& statement) {
    const Result* rows = statement.rows();
    if (rows == nullptr || number < 1 || number > rows->columns.size()) return unknownColumn(statement);
    const std::size_t column = number - 1U;
    const Described known = described(*rows, column);
    if (type != nullptr) *type = known.type;
    if (size != nullptr) *size = known.size;
    if (digits != nullptr) *digits = known.digits;
    if (nullable != nullptr) *nullable = SQL_NULLABLE_UNKNOWN;
    return copyOut(toUtf16(rows->columns[column].name), name, room, length);
  });
}

SQLRETURN SQL_API SQLBindParameter(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT, SQLSMALLINT valueType,
                                   SQLSMALLINT, SQLULEN, SQLSMALLINT, SQLPOINTER value, SQLLEN,
                                   SQLLEN* length) {
  return entered<Statement>(handle, [&](Statement& statement) {
    if (statement.parameters.size() < number) statement.parameters.resize(number);
    statement.parameters[number - 1U] = {valueType, value, length};
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT option) {
  return entered<Statement>(handle, [&](Statement& statement) {
    if (option == SQL_CLOSE) statement.close();
    if (option == SQL_UNBIND) statement.bound.clear();
    if (option == SQL_RESET_PARAMS) statement.parameters.clear();
    return SQL_SUCCESS;
  });
}

// It comes from another thread, while the statement is at work.
SQLRETURN SQL_API SQLCancel(SQLHSTMT handle) {
  static_cast<Statement*>(static_cast<Handle*>(handle))->connection.session->interrupt();
  return SQL_SUCCESS;
}
