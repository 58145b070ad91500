#pragma once

#include <QString>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/row.h"
#include "host/data/database.h"

namespace goodsbook {

// How a database wants to be told what a copy of rows brings along.
struct CopyWords {
  QString identityInsert =
      QStringLiteral("set identity_insert %1 %2");  // table, on or off; empty: not needed
  std::string bytesBefore = "0x", bytesAfter = {};  // around the digits of bytes
  std::string textBefore = "N'";
};

CopyWords copyWordsFor(Database& database);

// Writes the values of one row as a VALUES list takes them: "(1,N'…',null)".
void appendRow(std::string& text, const engine::Row& row, std::span<const engine::Column> columns,
               const CopyWords& words);

// Sums over rows that tell whether two tables hold the same. What type a database gives a number plays no
// part, nor does the order of the rows.
class RowSums {
 public:
  void add(const engine::Row& row, std::span<const engine::Column> columns);

  std::int64_t rows() const { return rows_; }
  // The column whose values differ, -1 when none does; where only their places in the rows differ, the first.
  int differingColumn(const RowSums& other) const;

 private:
  std::int64_t rows_ = 0;
  std::uint64_t whole_ = 0;
  std::vector<std::uint64_t> columns_;
};

}  // namespace goodsbook
