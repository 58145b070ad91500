#include "host/data/odbc/row_block.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

#include "host/data/errors.h"
#include "host/data/odbc/odbc_connection.h"
#include "host/data/odbc/odbc_handle.h"
#include "host/data/odbc/wide_text.h"

namespace goodsbook {
namespace {

constexpr SQLULEN longestBound = 8000;  // characters or bytes of a column that is fetched in blocks
constexpr SQLULEN blockBytes = 1U << 20U;
constexpr SQLULEN mostRows = 500;
constexpr SQLLEN firstPiece = SQLLEN{16} * 1024;

// Time-stamps with a zone, as the servers' drivers number them.
constexpr SQLSMALLINT zonedTime = -155;

engine::Type typeOf(SQLSMALLINT type, SQLULEN size, SQLSMALLINT digits) {
  constexpr SQLULEN digitsOfInteger = 18;
  switch (type) {
    case SQL_BIT:
      return engine::Type::Bit;
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return engine::Type::Integer;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
      return digits == 0 && size <= digitsOfInteger ? engine::Type::Integer : engine::Type::Float;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return engine::Type::Float;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case zonedTime:
      return engine::Type::DateTime;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
      return engine::Type::Blob;
    default:
      return engine::Type::Text;
  }
}

SQLSMALLINT fetchedAs(engine::Type type) {
  switch (type) {
    case engine::Type::Bit:
    case engine::Type::Integer:
      return SQL_C_SBIGINT;
    case engine::Type::Float:
      return SQL_C_DOUBLE;
    case engine::Type::DateTime:
      return SQL_C_TYPE_TIMESTAMP;
    case engine::Type::Blob:
      return SQL_C_BINARY;
    case engine::Type::Text:
      return SQL_C_WCHAR;
  }
  return SQL_C_WCHAR;
}

// Days from 1900-01-01 in the calendar that goes back for ever.
std::int64_t daysSince1900(int year, int month, int day) {
  constexpr std::int64_t epoch = 693'901;  // 1900-01-01 counted from 0000-03-01
  const std::int64_t y = month <= 2 ? year - 1 : year;
  const std::int64_t m = month <= 2 ? month + 9 : month - 3;
  return 365 * y + y / 4 - y / 100 + y / 400 + (153 * m + 2) / 5 + day - 1 - epoch;
}

std::int64_t milliseconds(const SQL_TIMESTAMP_STRUCT& time) {
  constexpr std::uint32_t nanosAMilli = 1'000'000;
  const std::int64_t seconds = daysSince1900(time.year, time.month, time.day) * 86'400 +
                               std::int64_t{time.hour} * 3'600 + std::int64_t{time.minute} * 60 + time.second;
  return seconds * 1'000 + (time.fraction + nanosAMilli / 2) / nanosAMilli;
}

}  // namespace

RowBlock::RowBlock(OdbcConnection& connection, const OdbcHandle& statement)
    : connection_(connection), statement_(statement) {
  describe();
  bind();
}

RowBlock::~RowBlock() {
  SQLFreeStmt(statement_.get(), SQL_UNBIND);
  SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROWS_FETCHED_PTR, nullptr, 0);
  SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROW_STATUS_PTR, nullptr, 0);
  SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROW_ARRAY_SIZE, attribute(1), 0);
}

void RowBlock::describe() {
  SQLSMALLINT count = 0;
  connection_.check(SQLNumResultCols(statement_.get(), &count), statement_);
  std::array<SQLWCHAR, 256> name{};
  for (SQLSMALLINT i = 1; i <= count; ++i) {
    SQLSMALLINT length = 0, type = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    connection_.check(
        SQLDescribeColW(statement_.get(), static_cast<SQLUSMALLINT>(i), name.data(),
                        static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits, &nullable),
        statement_);
    const auto shown = std::clamp<std::size_t>(static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)), 0,
                                               name.size() - 1);
    auto& column = columns_.emplace_back();
    std::vector<char> buffer;
    column.name = toUtf8(std::span(name.data(), shown), buffer);
    column.type = typeOf(type, size, digits);
    auto& bound = bound_.emplace_back();
    bound.type = fetchedAs(column.type);
    const bool varies = column.type == engine::Type::Text || column.type == engine::Type::Blob;
    const bool unlimited = size == 0 || size > longestBound || type == SQL_LONGVARCHAR ||
                           type == SQL_WLONGVARCHAR || type == SQL_LONGVARBINARY;
    if (varies && unlimited) whole_ = true;
    if (column.type == engine::Type::Text && !unlimited) column.width = static_cast<int>(size);
    bound.stride = column.type == engine::Type::Text   ? static_cast<SQLLEN>((size + 1) * sizeof(SQLWCHAR))
                   : column.type == engine::Type::Blob ? static_cast<SQLLEN>(size)
                   : column.type == engine::Type::DateTime ? static_cast<SQLLEN>(sizeof(SQL_TIMESTAMP_STRUCT))
                                                           : static_cast<SQLLEN>(sizeof(std::int64_t));
    if (varies && unlimited) bound.stride = firstPiece;
  }
}

void RowBlock::bind() {
  SQLULEN rowBytes = 1;
  for (const Bound& bound : bound_) rowBytes += static_cast<SQLULEN>(bound.stride);
  blockRows_ = whole_ ? 1 : std::clamp<SQLULEN>(blockBytes / rowBytes, 1, mostRows);
  const SQLHANDLE statement = statement_.get();
  SQLSetStmtAttr(statement, SQL_ATTR_ROW_BIND_TYPE, attribute(SQL_BIND_BY_COLUMN), 0);
  connection_.check(SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, attribute(blockRows_), 0), statement_);
  connection_.check(SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, 0), statement_);
  states_.assign(blockRows_, SQL_ROW_SUCCESS);
  connection_.check(SQLSetStmtAttr(statement, SQL_ATTR_ROW_STATUS_PTR, states_.data(), 0), statement_);
  for (std::size_t i = 0; i < bound_.size(); ++i) {
    Bound& bound = bound_[i];
    bound.values.resize(static_cast<std::size_t>(bound.stride) * blockRows_);
    bound.lengths.resize(blockRows_);
    if (whole_) continue;
    connection_.check(SQLBindCol(statement, static_cast<SQLUSMALLINT>(i + 1), bound.type, bound.values.data(),
                                 bound.stride, bound.lengths.data()),
                      statement_);
  }
}

bool RowBlock::next() {
  if (needsRows()) {
    fetchAhead();
  } else if (!ahead_ && !end_) {
    ++row_;
    return true;
  }
  ahead_ = false;
  return !end_;
}

void RowBlock::fetchAhead() {
  end_ = !fetch();
  ahead_ = true;
}

bool RowBlock::fetch() {
  fetched_ = 0;
  row_ = 0;
  const SQLRETURN code = SQLFetch(statement_.get());
  if (code == SQL_NO_DATA) return false;
  connection_.check(code, statement_);
  if (code == SQL_SUCCESS_WITH_INFO) checkRows();
  if (fetched_ == 0) fetched_ = 1;  // a driver that does not count fetched the one row
  for (Bound& bound : bound_) bound.utf8Row = ~SQLULEN{0};
  if (whole_) {
    for (std::size_t i = 0; i < bound_.size(); ++i) getWhole(static_cast<SQLUSMALLINT>(i + 1), bound_[i]);
  } else if (code == SQL_SUCCESS_WITH_INFO) {
    checkLengths();
  }
  return true;
}

// A block that ends in an error, or has a row with one, is told as a success as long as some of its rows
// came.
void RowBlock::checkRows() {
  connection_.checkMessages(statement_);
  const auto end =
      states_.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(fetched_, states_.size()));
  if (std::find(states_.begin(), end, SQL_ROW_ERROR) == end) return;
  throw EDatabaseError(50000, 16, 1, 1, QCoreApplication::translate("RowBlock", "有一行不能读取"));
}

// A value that did not fit would be shown cut off, and saved so.
void RowBlock::checkLengths() const {
  for (std::size_t i = 0; i < bound_.size(); ++i) {
    const Bound& bound = bound_[i];
    const SQLLEN room =
        bound.type == SQL_C_WCHAR ? bound.stride - static_cast<SQLLEN>(sizeof(SQLWCHAR)) : bound.stride;
    if (bound.type != SQL_C_WCHAR && bound.type != SQL_C_BINARY) continue;
    for (SQLULEN row = 0; row < fetched_; ++row) {
      if (bound.lengths[row] <= room && bound.lengths[row] != SQL_NO_TOTAL) continue;
      throw EDatabaseError(
          50000, 16, 1, 1,
          QCoreApplication::translate("RowBlock", "列 %1 的值比驱动程序说明的宽度长，不能完整读取")
              .arg(QString::fromStdString(columns_[i].name)));
    }
  }
}

// How many of the `room` bytes behind `from` a piece that goes on has filled: a driver leaves the last unit
// empty rather than part a surrogate pair.
SQLLEN RowBlock::filled(const Bound& bound, SQLLEN from, SQLLEN room) {
  constexpr auto unit = static_cast<SQLLEN>(sizeof(SQLWCHAR));
  if (bound.type != SQL_C_WCHAR || room <= unit) return room;
  SQLWCHAR last = 0;
  std::memcpy(&last, bound.values.data() + from + room - unit, sizeof(last));
  return last == 0 ? room - unit : room;
}

// Fetches a value of any length, piece by piece.
void RowBlock::getWhole(SQLUSMALLINT number, Bound& bound) {
  const SQLLEN terminator = bound.type == SQL_C_WCHAR ? static_cast<SQLLEN>(sizeof(SQLWCHAR)) : 0;
  SQLLEN have = 0;
  for (;;) {
    SQLLEN left = 0;
    const SQLLEN room = static_cast<SQLLEN>(bound.values.size()) - have;
    const SQLRETURN code =
        SQLGetData(statement_.get(), number, bound.type, bound.values.data() + have, room, &left);
    if (code == SQL_NO_DATA) break;
    connection_.check(code, statement_);
    if (left == SQL_NULL_DATA) {
      bound.lengths[0] = SQL_NULL_DATA;
      return;
    }
    const bool fits = left != SQL_NO_TOTAL && left <= room - terminator;
    if (fits || (bound.type != SQL_C_WCHAR && bound.type != SQL_C_BINARY)) {
      have += left;
      break;
    }
    const SQLLEN came = filled(bound, have, room - terminator);
    have += came;
    const SQLLEN more = left == SQL_NO_TOTAL ? have : left - came;
    bound.values.resize(static_cast<std::size_t>(have + more + terminator));
  }
  bound.lengths[0] = have;
}

bool RowBlock::isNull(int column) const {
  return bound_[static_cast<std::size_t>(column)].lengths[row_] == SQL_NULL_DATA;
}

std::int64_t RowBlock::integer(int column) const {
  const Bound& bound = bound_[static_cast<std::size_t>(column)];
  if (bound.lengths[row_] == SQL_NULL_DATA) return 0;
  if (bound.type == SQL_C_TYPE_TIMESTAMP) {
    SQL_TIMESTAMP_STRUCT time;
    std::memcpy(&time, at(bound), sizeof(time));
    return milliseconds(time);
  }
  std::int64_t value = 0;
  if (bound.type == SQL_C_SBIGINT) std::memcpy(&value, at(bound), sizeof(value));
  return value;
}

double RowBlock::real(int column) const {
  const Bound& bound = bound_[static_cast<std::size_t>(column)];
  double value = 0;
  if (bound.type == SQL_C_DOUBLE && bound.lengths[row_] != SQL_NULL_DATA)
    std::memcpy(&value, at(bound), sizeof(value));
  return value;
}

std::string_view RowBlock::text(int column) const {
  const Bound& bound = bound_[static_cast<std::size_t>(column)];
  const SQLLEN length = bound.lengths[row_];
  if (bound.type != SQL_C_WCHAR || length <= 0) return {};
  if (bound.utf8Row != row_) {
    const auto* wide = reinterpret_cast<const SQLWCHAR*>(at(bound));
    bound.utf8 = toUtf8({wide, static_cast<std::size_t>(length) / sizeof(SQLWCHAR)}, bound.buffer);
    bound.utf8Row = row_;
  }
  return bound.utf8;
}

std::span<const std::byte> RowBlock::blob(int column) const {
  const Bound& bound = bound_[static_cast<std::size_t>(column)];
  const SQLLEN length = bound.lengths[row_];
  if (bound.type != SQL_C_BINARY || length <= 0) return {};
  return {at(bound), static_cast<std::size_t>(length)};
}

}  // namespace goodsbook
