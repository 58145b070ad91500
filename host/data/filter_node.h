#pragma once

#include <memory>
#include <string>

#include "host/data/row_table.h"

namespace goodsbook {

// One side of a comparison: a field, or a value that was made ready for the other side's type.
struct FilterOperand {
  int field = -1;
  FieldType type = FieldType::Text;
  double number = 0;        // Integer, Float, Boolean
  std::int64_t moment = 0;  // DateTime
  std::string text;         // Text; folded for Like
};

struct FilterNode {
  enum class Kind { And, Or, Not, Compare, Like, IsNull } kind = Kind::And;
  enum class Order { Equal, Unequal, Less, Greater, LessOrEqual, GreaterOrEqual } order = Order::Equal;
  std::unique_ptr<FilterNode> left, right;  // And, Or; Not has only left
  FilterOperand a, b;                       // Compare, Like; IsNull has only a
};

}  // namespace goodsbook
