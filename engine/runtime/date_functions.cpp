#include <array>

#include "engine/runtime/date_time.h"
#include "engine/runtime/function_support.h"

namespace goodsbook::engine {
namespace {

using Arguments = FunctionArguments;

DatePart partArgument(const Arguments& a) {
  return static_cast<DatePart>(a.integer(0));
}

void dateAdd(const Arguments& a) {
  if (!a.anyNull()) a.give(addDateParts(partArgument(a), a.integer(1), a.integer(2)));
}
void dateDiff(const Arguments& a) {
  if (!a.anyNull()) a.give(differenceInParts(partArgument(a), a.integer(1), a.integer(2)));
}
void datePart(const Arguments& a) {
  if (!a.anyNull()) a.give(std::int64_t{datePartValue(partArgument(a), a.integer(1))});
}

}  // namespace

void registerDateFunctions(sqlite3* db, FunctionErrors& errors) {
  static constexpr std::array<FunctionEntry, 3> entries{{
      {"ts_dateadd", 3, callFunction<dateAdd>},
      {"ts_datediff", 3, callFunction<dateDiff>},
      {"ts_datepart", 2, callFunction<datePart>},
  }};
  registerFunctions(db, errors, entries);
}

}  // namespace goodsbook::engine
