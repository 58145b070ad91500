#pragma once

#include <string_view>

#include "engine/runtime/sql_type.h"
#include "engine/runtime/value.h"

namespace goodsbook::engine {

// What a conversion is for.
struct Conversion {
  static constexpr int noStyle = -1;
  int style = noStyle;        // of CONVERT
  bool cut = false;           // CAST and CONVERT cut a text that is too long; everything else refuses it
  std::string_view target{};  // 'table.column' of an assignment, for messages
};

// Converts as a server does, or throws: 245, 8114, 241, 242 for a text that does not convert, 248, 8115 for a
// number that does not fit, 2628 for a text that is too long, 529 and 206 where no conversion exists. NULL
// stays NULL.
Value convertValue(const Value& value, SqlType from, SqlType to, const Conversion& conversion = {});

// Whether convertValue never changes a value nor fails: the type's storage is the same and nothing needs to
// be checked.
bool isSameStorage(SqlType from, SqlType to);

// Throws 206 or 529 when values of one type never become the other.
void requireConvertible(SqlType from, SqlType to, bool isExplicit);

}  // namespace goodsbook::engine
