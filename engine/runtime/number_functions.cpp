#include <algorithm>
#include <array>
#include <cmath>

#include "engine/runtime/convert.h"
#include "engine/runtime/failure.h"
#include "engine/runtime/function_support.h"
#include "engine/runtime/number_text.h"

namespace goodsbook::engine {
namespace {

using Arguments = FunctionArguments;

[[noreturn]] void failDivision() {
  fail(8134, "遇到以零作除数错误。");
}

void wholeDivide(const Arguments& a) {
  if (a.anyNull()) return;
  const std::int64_t divisor = a.integer(1);
  if (divisor == 0) failDivision();
  a.give(divisor == -1 ? -a.integer(0) : a.integer(0) / divisor);
}

void wholeModulo(const Arguments& a) {
  if (a.anyNull()) return;
  const std::int64_t divisor = a.integer(1);
  if (divisor == 0) failDivision();
  a.give(divisor == -1 ? std::int64_t{0} : a.integer(0) % divisor);
}

void divide(const Arguments& a) {
  if (a.anyNull()) return;
  if (a.real(1) == 0) failDivision();
  a.give(a.real(0) / a.real(1));
}

void modulo(const Arguments& a) {
  if (a.anyNull()) return;
  if (a.real(1) == 0) failDivision();
  a.give(std::fmod(a.real(0), a.real(1)));
}

// ts_range(number, type): an arithmetic result that must fit its whole type, or be a number at all.
void range(const Arguments& a) {
  if (a.isNull(0)) return;
  const SqlType type = unpackType(a.integer(1));
  if (sqlite3_value_type(a.at(0)) == SQLITE_FLOAT) {
    if (isWhole(type.kind) || !std::isfinite(a.real(0)))
      fail(8115, concat("将 expression 转换为数据类型 ", typeName(type), " 时出现算术溢出错误。"));
    a.give(a.real(0));
    return;
  }
  a.give(convertValue(a.integer(0), {Kind::BigInt}, type));
}

// ts_round(number, digits, cut)
void round(const Arguments& a) {
  if (a.anyNull()) return;
  const auto digits = static_cast<int>(std::clamp<std::int64_t>(a.integer(1), -400, 400));
  const bool cut = a.integer(2) != 0;
  if (sqlite3_value_type(a.at(0)) == SQLITE_INTEGER && digits >= 0) {
    a.give(a.integer(0));
    return;
  }
  const double result = cut ? truncateDecimal(a.real(0), digits) : roundDecimal(a.real(0), digits);
  if (sqlite3_value_type(a.at(0)) == SQLITE_INTEGER)
    a.give(static_cast<std::int64_t>(result));
  else
    a.give(result);
}

template <double (*Operation)(double)>
void unary(const Arguments& a) {
  if (a.anyNull()) return;
  if (sqlite3_value_type(a.at(0)) == SQLITE_INTEGER)
    a.give(a.integer(0));
  else
    a.give(Operation(a.real(0)));
}

void sign(const Arguments& a) {
  if (a.anyNull()) return;
  const double value = a.real(0);
  const std::int64_t result = value > 0 ? 1 : value < 0 ? -1 : 0;
  if (sqlite3_value_type(a.at(0)) == SQLITE_INTEGER)
    a.give(result);
  else
    a.give(static_cast<double>(result));
}

void power(const Arguments& a) {
  if (a.anyNull()) return;
  const double result = std::pow(a.real(0), a.real(1));
  if (!std::isfinite(result)) fail(3623, "出现无效的浮点操作。");
  a.give(result);
}

void squareRoot(const Arguments& a) {
  if (a.anyNull()) return;
  if (a.real(0) < 0) fail(3623, "出现无效的浮点操作。");
  a.give(std::sqrt(a.real(0)));
}

double roundDown(double value) {
  return std::floor(value);
}
double roundUp(double value) {
  return std::ceil(value);
}

}  // namespace

void registerNumberFunctions(sqlite3* db, FunctionErrors& errors) {
  static constexpr std::array<FunctionEntry, 11> entries{{
      {"ts_idiv", 2, callFunction<wholeDivide>},
      {"ts_imod", 2, callFunction<wholeModulo>},
      {"ts_div", 2, callFunction<divide>},
      {"ts_mod", 2, callFunction<modulo>},
      {"ts_range", 2, callFunction<range>},
      {"ts_round", 3, callFunction<round>},
      {"ts_floor", 1, callFunction<unary<roundDown>>},
      {"ts_ceiling", 1, callFunction<unary<roundUp>>},
      {"ts_sign", 1, callFunction<sign>},
      {"ts_power", 2, callFunction<power>},
      {"ts_sqrt", 1, callFunction<squareRoot>},
  }};
  registerFunctions(db, errors, entries);
}

}  // namespace goodsbook::engine
