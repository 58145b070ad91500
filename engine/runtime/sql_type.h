#pragma once

#include <cstdint>
#include <string>

#include "engine/row.h"

namespace goodsbook::engine {

// The types of T-SQL in the order of their precedence: where two of them meet, the later one wins.
enum class Kind : std::uint8_t {
  Null,  // the literal NULL, of no type yet
  Binary,
  Text,
  Bit,
  TinyInt,
  SmallInt,
  Int,
  BigInt,
  Money,
  Decimal,
  Float,
  DateTime
};

struct SqlType {
  Kind kind = Kind::Null;
  int width = 0;  // characters of a text, bytes of a binary, digits of a decimal; 0 where there is no limit
  int scale = 0;  // digits behind the point of a decimal
  bool operator==(const SqlType&) const = default;
};

inline constexpr int moneyScale = 4;

constexpr bool isWhole(Kind kind) {
  return kind >= Kind::Bit && kind <= Kind::BigInt;
}
constexpr bool isFractional(Kind kind) {
  return kind >= Kind::Money && kind <= Kind::Float;
}
constexpr bool isNumber(Kind kind) {
  return isWhole(kind) || isFractional(kind);
}

// The name in messages: varchar, int, …
std::string typeName(SqlType type);

// What a column of this type is to readers of a result.
Type resultType(SqlType type);

// A type in one number, so that an SQLite function can be told of it.
std::int64_t packType(SqlType type);
SqlType unpackType(std::int64_t packed);

}  // namespace goodsbook::engine
