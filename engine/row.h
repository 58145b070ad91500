#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/error.h"

// What a statement gives back: typed columns, rows that are read in place, counts and notices. Every kind of
// database that the host speaks to hands its rows out in this form.
namespace goodsbook::engine {

enum class Type : std::uint8_t { Bit, Integer, Float, DateTime, Text, Blob };

struct Column {
  std::string name;  // as written in the select list or, for *, as declared; empty for an unnamed expression
  Type type = Type::Text;
  int width = 0;  // characters of a text column, 0 where none is declared
  bool operator==(const Column&) const = default;
};

// The current row of a result. Values are read in place: what a view points at lives until the next row is
// fetched. A null reads as 0 or as an empty text; isNull tells it from one.
class Row {
 public:
  virtual ~Row() = default;
  virtual bool isNull(int column) const = 0;
  virtual std::int64_t integer(int column) const = 0;             // Bit (0 or 1), Integer, DateTime
  virtual double real(int column) const = 0;                      // Float
  virtual std::string_view text(int column) const = 0;            // Text, UTF-8
  virtual std::span<const std::byte> blob(int column) const = 0;  // Blob
};
// A DateTime is a number of milliseconds since 1900-01-01 00:00:00 without time zone, rounded as a server
// rounds (the last digit is 0, 3 or 7).

// Receives what a batch gives, in the order in which it happens.
class ResultSink {
 public:
  virtual ~ResultSink() = default;
  virtual void beginSet(std::span<const Column> columns) = 0;
  virtual void row(const Row& row) = 0;
  virtual void endSet() {}
  virtual void affected(std::int64_t rows) { (void)rows; }         // of a statement that gives no set
  virtual void notice(const Diagnostic& notice) { (void)notice; }  // severity 10 or below
};

// A select that is read at the caller's pace. It sees the database as it was when it was opened and must be
// destroyed before its connection.
class Cursor {
 public:
  virtual ~Cursor() = default;
  virtual std::span<const Column> columns() const = 0;
  virtual bool next() = 0;             // false at the end; throws SqlError
  virtual const Row& row() const = 0;  // after next() gave true; not behind ready()
  // Whether next() can answer at once; waits for that as long as `patience`. Rows that come from afar are on
  // their way once it was asked.
  virtual bool ready(std::chrono::milliseconds patience) { return patience.count() >= 0; }
};

}  // namespace goodsbook::engine
