// Rows.
#include <algorithm>
#include <chrono>
#include <cstring>

#include "tests/odbc/engine_driver/copy_out.h"
#include "tests/odbc/engine_driver/handles.h"

using namespace goodsbook::engine_driver;

namespace {

SQL_TIMESTAMP_STRUCT timestamp(std::int64_t milliseconds) {
  using namespace std::chrono;
  const sys_time<std::chrono::milliseconds> time =
      sys_days(year{1900} / 1 / 1) + std::chrono::milliseconds(milliseconds);
  const auto day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss<std::chrono::milliseconds> clock(time - day);
  constexpr SQLUINTEGER nanosAMilli = 1'000'000;
  return {.year = static_cast<SQLSMALLINT>(int(date.year())),
          .month = static_cast<SQLUSMALLINT>(unsigned(date.month())),
          .day = static_cast<SQLUSMALLINT>(unsigned(date.day())),
          .hour = static_cast<SQLUSMALLINT>(clock.hours().count()),
          .minute = static_cast<SQLUSMALLINT>(clock.minutes().count()),
          .second = static_cast<SQLUSMALLINT>(clock.seconds().count()),
          .fraction = static_cast<SQLUINTEGER>(clock.subseconds().count()) * nanosAMilli};
}

struct Target {
  SQLSMALLINT type;
  void* value;
  SQLLEN room;  // bytes
  SQLLEN* length;
};

template <typename Value>
SQLRETURN give(const Target& target, const Value& value) {
  std::memcpy(target.value, &value, sizeof(value));
  if (target.length != nullptr) *target.length = sizeof(value);
  return SQL_SUCCESS;
}

// A piece of a text or of bytes, from `taken` on.
SQLRETURN givePiece(const Target& target, const void* bytes, std::size_t size, std::size_t terminator,
                    std::size_t& taken) {
  const std::size_t left = size - taken;
  const std::size_t room = static_cast<std::size_t>(std::max<SQLLEN>(target.room, 0));
  const std::size_t usable = room < terminator ? 0 : room - terminator;
  const std::size_t copied = std::min(left, terminator == 0 ? usable : usable / terminator * terminator);
  std::memcpy(target.value, static_cast<const std::byte*>(bytes) + taken, copied);
  if (terminator != 0 && room >= terminator) {
    std::memset(static_cast<std::byte*>(target.value) + copied, 0, terminator);
  }
  if (target.length != nullptr) *target.length = static_cast<SQLLEN>(left);
  taken += copied;
  return copied == left ? SQL_SUCCESS : SQL_SUCCESS_WITH_INFO;
}

// SQL_SUCCESS_WITH_INFO: there is more of it.
SQLRETURN giveCell(Statement& statement, const Cell& cell, goodsbook::engine::Type type, const Target& target,
                   std::size_t& taken) {
  if (std::holds_alternative<std::monostate>(cell)) {
    if (target.length != nullptr) *target.length = SQL_NULL_DATA;
    return SQL_SUCCESS;
  }
  const auto* whole = std::get_if<std::int64_t>(&cell);
  if (whole != nullptr && target.type == SQL_C_SBIGINT) return give(target, *whole);
  if (whole != nullptr && target.type == SQL_C_TYPE_TIMESTAMP && type == goodsbook::engine::Type::DateTime) {
    return give(target, timestamp(*whole));
  }
  const auto* real = std::get_if<double>(&cell);
  if (real != nullptr && target.type == SQL_C_DOUBLE) return give(target, *real);
  const auto* text = std::get_if<std::u16string>(&cell);
  if (text != nullptr && target.type == SQL_C_WCHAR) {
    return givePiece(target, text->data(), text->size() * sizeof(SQLWCHAR), sizeof(SQLWCHAR), taken);
  }
  const auto* bytes = std::get_if<std::vector<std::byte>>(&cell);
  if (bytes != nullptr && target.type == SQL_C_BINARY) {
    return givePiece(target, bytes->data(), bytes->size(), 0, taken);
  }
  statement.tell(u"07006", "this conversion is not known");
  return SQL_ERROR;
}

// The bound columns of a row into its place of the arrays.
SQLRETURN giveRow(Statement& statement, const Result& rows, std::size_t row, std::size_t place) {
  SQLRETURN worst = SQL_SUCCESS;
  const std::size_t columns = std::min(statement.bound.size(), rows.columns.size());
  for (std::size_t i = 0; i < columns; ++i) {
    const BoundColumn& bound = statement.bound[i];
    if (bound.values == nullptr) continue;
    const Target target{
        bound.type, static_cast<std::byte*>(bound.values) + place * static_cast<std::size_t>(bound.stride),
        bound.stride, bound.lengths == nullptr ? nullptr : bound.lengths + place};
    std::size_t taken = 0;
    const SQLRETURN code = giveCell(statement, rows.at(row, i), rows.columns[i].type, target, taken);
    if (code == SQL_ERROR) return code;
    if (code == SQL_SUCCESS_WITH_INFO) {
      statement.tell(u"01004", "a value was cut");
      statement.records.back().message.severity = 0;
      worst = code;
    }
  }
  return worst;
}

void tellBlock(Statement& statement, SQLULEN rows) {
  if (statement.fetchedCount != nullptr) *statement.fetchedCount = rows;
  if (statement.rowStates == nullptr) return;
  std::fill_n(statement.rowStates, rows, static_cast<SQLUSMALLINT>(SQL_ROW_SUCCESS));
  std::fill_n(statement.rowStates + rows, statement.arraySize - rows,
              static_cast<SQLUSMALLINT>(SQL_ROW_NOROW));
}

}  // namespace

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER which, SQLPOINTER value, SQLINTEGER) {
  return entered<Statement>(handle, [&](Statement& statement) -> SQLRETURN {
    switch (which) {
      case SQL_ATTR_ROW_ARRAY_SIZE:
        statement.arraySize = std::max<SQLULEN>(1, reinterpret_cast<SQLULEN>(value));
        return SQL_SUCCESS;
      case SQL_ATTR_ROWS_FETCHED_PTR:
        statement.fetchedCount = static_cast<SQLULEN*>(value);
        return SQL_SUCCESS;
      case SQL_ATTR_ROW_STATUS_PTR:
        statement.rowStates = static_cast<SQLUSMALLINT*>(value);
        return SQL_SUCCESS;
      case SQL_ATTR_ROW_BIND_TYPE:
        return value == nullptr ? SQL_SUCCESS : SQL_ERROR;  // by column
      case SQL_ATTR_NOSCAN:
      case SQL_ATTR_QUERY_TIMEOUT:
        return SQL_SUCCESS;
      default:
        statement.tell(u"HYC00", "attribute not known");
        return SQL_ERROR;
    }
  });
}

SQLRETURN SQL_API SQLBindCol(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER values,
                             SQLLEN stride, SQLLEN* lengths) {
  return entered<Statement>(handle, [&](Statement& statement) {
    if (statement.bound.size() < number) statement.bound.resize(number);
    statement.bound[number - 1U] = {type, values, stride, lengths};
    return SQL_SUCCESS;
  });
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle) {
  return entered<Statement>(handle, [](Statement& statement) -> SQLRETURN {
    const Result* rows = statement.rows();
    if (rows == nullptr) {
      statement.tell(u"24000", "no rows");
      return SQL_ERROR;
    }
    SQLRETURN code = SQL_SUCCESS;
    SQLULEN fetched = 0;
    while (fetched < statement.arraySize && statement.nextRow < rows->rowCount()) {
      const SQLRETURN one = giveRow(statement, *rows, statement.nextRow, fetched);
      if (one == SQL_ERROR) return one;
      if (one == SQL_SUCCESS_WITH_INFO) code = one;
      ++fetched;
      ++statement.nextRow;
    }
    statement.takenBytes.assign(rows->columns.size(), 0);
    tellBlock(statement, fetched);
    const bool atFailure =
        rows->failure && statement.nextRow == rows->rowCount() && fetched < statement.arraySize;
    if (atFailure) {
      statement.tell(*rows->failure);
      return fetched == 0 ? SQL_ERROR : SQL_SUCCESS_WITH_INFO;
    }
    return fetched == 0 ? SQL_NO_DATA : code;
  });
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER value,
                             SQLLEN room, SQLLEN* length) {
  return entered<Statement>(handle, [&](Statement& statement) -> SQLRETURN {
    const Result* rows = statement.rows();
    if (rows == nullptr || statement.nextRow == 0 || number < 1 || number > rows->columns.size()) {
      statement.tell(u"07009", "no such value");
      return SQL_ERROR;
    }
    const std::size_t column = number - 1U;
    std::size_t& taken = statement.takenBytes.at(column);
    if (taken == Statement::all) return SQL_NO_DATA;
    const SQLRETURN code = giveCell(statement, rows->at(statement.nextRow - 1, column),
                                    rows->columns[column].type, {type, value, room, length}, taken);
    if (code == SQL_SUCCESS) taken = Statement::all;
    if (code == SQL_SUCCESS_WITH_INFO) {
      statement.tell(u"01004", "there is more");
      statement.records.back().message.severity = 0;
    }
    return code;
  });
}
