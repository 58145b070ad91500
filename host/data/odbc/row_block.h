#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

#include "engine/row.h"

namespace goodsbook {

class OdbcConnection;
class OdbcHandle;

// The rows of the set that a statement stands on, fetched in blocks into typed columns. A set with a column
// of unlimited length is fetched row by row, so that long texts and pictures arrive whole.
class RowBlock : public engine::Row {
 public:
  // Describes the columns and binds them. EDatabaseError.
  RowBlock(OdbcConnection& connection, const OdbcHandle& statement);
  ~RowBlock() override;
  RowBlock(const RowBlock&) = delete;
  RowBlock& operator=(const RowBlock&) = delete;

  std::span<const engine::Column> columns() const { return columns_; }
  bool next();  // to the next row; false at the end. EDatabaseError.

  // Whether next() has to ask the driver.
  bool needsRows() const { return !ahead_ && !end_ && row_ + 1 >= fetched_; }
  // Asks it, for the next() to come; from any one thread. The current row is gone. EDatabaseError.
  void fetchAhead();
  bool comesRowByRow() const { return whole_; }

  bool isNull(int column) const override;
  std::int64_t integer(int column) const override;
  double real(int column) const override;
  std::string_view text(int column) const override;
  std::span<const std::byte> blob(int column) const override;

 private:
  struct Bound {
    SQLSMALLINT type = SQL_C_WCHAR;  // as fetched
    SQLLEN stride = 0;               // bytes a value
    std::vector<std::byte> values;
    std::vector<SQLLEN> lengths;
    mutable std::vector<char> buffer;  // behind utf8
    mutable std::string_view utf8;     // of the row utf8Row
    mutable SQLULEN utf8Row = ~SQLULEN{0};
  };

  void describe();
  void bind();
  bool fetch();
  void getWhole(SQLUSMALLINT number, Bound& bound);
  static SQLLEN filled(const Bound& bound, SQLLEN from, SQLLEN room);
  void checkRows();
  void checkLengths() const;
  const std::byte* at(const Bound& bound) const {
    return bound.values.data() + row_ * static_cast<SQLULEN>(bound.stride);
  }

  OdbcConnection& connection_;
  const OdbcHandle& statement_;
  std::vector<engine::Column> columns_;
  std::vector<Bound> bound_;
  bool whole_ = false;  // row by row, values of any length
  SQLULEN blockRows_ = 1;
  SQLULEN fetched_ = 0;               // rows in the block
  std::vector<SQLUSMALLINT> states_;  // of the rows, as fetched
  SQLULEN row_ = 0;                   // of the block
  bool ahead_ = false;                // the block is fetched, next() has not come to it yet
  bool end_ = false;
};

}  // namespace goodsbook
