#include <array>

#include "engine/runtime/convert.h"
#include "engine/runtime/function_support.h"

namespace goodsbook::engine {
namespace {

using Arguments = FunctionArguments;

void giveConverted(const Arguments& a, const Conversion& conversion) {
  if (!a.isNull(0))
    a.give(convertValue(a.value(0), unpackType(a.integer(1)), unpackType(a.integer(2)), conversion));
}

// ts_convert(value, from, to, style): CAST and CONVERT.
void convert(const Arguments& a) {
  giveConverted(a, {.style = static_cast<int>(a.integer(3)), .cut = true});
}

// ts_implicit(value, from, to): where operands of two types meet.
void implicit(const Arguments& a) {
  giveConverted(a, {});
}

// ts_assign(value, from, to, 'table.column')
void assign(const Arguments& a) {
  giveConverted(a, {.target = a.text(3)});
}

}  // namespace

void registerConversions(sqlite3* db, FunctionErrors& errors) {
  static constexpr std::array<FunctionEntry, 3> entries{{
      {"ts_convert", 4, callFunction<convert>},
      {"ts_implicit", 3, callFunction<implicit>},
      {"ts_assign", 4, callFunction<assign>},
  }};
  registerFunctions(db, errors, entries);
}

}  // namespace goodsbook::engine
