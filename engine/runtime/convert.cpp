#include "engine/runtime/convert.h"

#include <cmath>
#include <limits>
#include <utility>

#include "engine/runtime/date_time.h"
#include "engine/runtime/failure.h"
#include "engine/runtime/number_text.h"
#include "engine/runtime/text.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

[[noreturn]] void failOverflow(SqlType to) {
  fail(8115, concat("将 expression 转换为数据类型 ", typeName(to), " 时出现算术溢出错误。"));
}

[[noreturn]] void failText(int number, std::string_view text, SqlType to, const Conversion& conversion) {
  const std::string where =
      conversion.target.empty() ? std::string() : concat("（列 ", conversion.target, "）");
  if (number == 245)
    fail(245, concat("在将 varchar 值“", text, "”转换成数据类型 ", typeName(to), " 时失败", where, "。"));
  fail(number, concat("从数据类型 varchar 转换为 ", typeName(to), " 时出错: “", text, "”", where, "。"));
}

bool isBlank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

std::pair<std::int64_t, std::int64_t> wholeRange(Kind kind) {
  switch (kind) {
    case Kind::TinyInt:
      return {0, 255};
    case Kind::SmallInt:
      return {std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()};
    case Kind::Int:
      return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
    default:
      return {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()};
  }
}

std::int64_t toWholeRange(std::int64_t value, SqlType to) {
  if (to.kind == Kind::Bit) return value != 0 ? 1 : 0;
  const auto [low, high] = wholeRange(to.kind);
  if (value < low || value > high) failOverflow(to);
  return value;
}

Value textToWhole(const std::string& text, SqlType to, const Conversion& conversion) {
  if (to.kind == Kind::Bit) {
    std::string_view word = text;
    while (!word.empty() && word.back() == ' ') word.remove_suffix(1);
    while (!word.empty() && word.front() == ' ') word.remove_prefix(1);
    if (sameName(word, "true")) return std::int64_t{1};
    if (sameName(word, "false")) return std::int64_t{0};
  }
  if (isBlank(text)) return std::int64_t{0};
  const auto number = readWhole(text);
  if (!number) failText(to.kind == Kind::BigInt ? 8114 : 245, text, to, conversion);
  const auto [low, high] = wholeRange(to.kind);
  if (to.kind == Kind::Bit) return std::int64_t{number->overflow || number->value != 0};
  if (number->overflow || number->value < low || number->value > high)
    fail(to.kind == Kind::Int      ? 248
         : to.kind == Kind::BigInt ? 8115
                                   : 244,
         concat("varchar 值“", text, "”的转换溢出了 ", typeName(to), " 列。"));
  return number->value;
}

Value toScale(double value, SqlType to) {
  if (to.kind == Kind::Money) return roundDecimal(value, moneyScale);
  if (to.kind != Kind::Decimal) return value;
  const double rounded = roundDecimal(value, to.scale);
  if (to.width > 0 && std::fabs(rounded) >= std::pow(10.0, to.width - to.scale)) failOverflow(to);
  return rounded;
}

Value textToFraction(const std::string& text, SqlType to, const Conversion& conversion) {
  if (isBlank(text)) {
    if (to.kind == Kind::Decimal) failText(8114, text, to, conversion);
    return 0.0;
  }
  const auto number = readNumber(text, to.kind == Kind::Float);
  if (!number) failText(to.kind == Kind::Money ? 235 : 8114, text, to, conversion);
  return toScale(*number, to);
}

Value textTo(const std::string& text, SqlType to, const Conversion& conversion) {
  if (isWhole(to.kind)) return textToWhole(text, to, conversion);
  if (isFractional(to.kind)) return textToFraction(text, to, conversion);
  if (to.kind == Kind::DateTime) {
    if (!isReadableStyle(conversion.style))
      fail(281,
           concat("将字符串转换为 datetime 时，", std::to_string(conversion.style), " 不是有效的样式号。"));
    return parseDateTime(text);
  }
  const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
  return Bytes(bytes, bytes + text.size());
}

Value numberToDateTime(double days) {
  const double milliseconds = std::round(days * static_cast<double>(millisecondsPerDay));
  if (!(std::fabs(milliseconds) < 1e15) || !inDateRange(static_cast<std::int64_t>(milliseconds)))
    failOverflow({Kind::DateTime});
  return roundDateTime(static_cast<std::int64_t>(milliseconds));
}

Value wholeTo(std::int64_t value, SqlType to) {
  if (isWhole(to.kind)) return toWholeRange(value, to);
  if (isFractional(to.kind)) return toScale(static_cast<double>(value), to);
  if (to.kind == Kind::DateTime) return numberToDateTime(static_cast<double>(value));
  return std::to_string(value);
}

Value fractionTo(double value, SqlType from, SqlType to) {
  if (to.kind == Kind::Bit) return std::int64_t{value != 0};
  if (isWhole(to.kind)) {
    const double whole = std::trunc(value);
    if (!(std::fabs(whole) < 9.3e18)) failOverflow(to);
    return toWholeRange(static_cast<std::int64_t>(whole), to);
  }
  if (isFractional(to.kind)) return toScale(value, to);
  if (to.kind == Kind::DateTime) return numberToDateTime(value);
  if (from.kind == Kind::Money) return fixedText(value, 2);
  return from.kind == Kind::Decimal ? fixedText(value, from.scale) : shortestText(value);
}

Value dateTimeTo(std::int64_t value, SqlType to, const Conversion& conversion) {
  const double days = static_cast<double>(value) / static_cast<double>(millisecondsPerDay);
  if (isFractional(to.kind)) return toScale(days, to);
  if (isWhole(to.kind)) return toWholeRange(static_cast<std::int64_t>(std::floor(days + 0.5)), to);
  return formatDateTime(value, conversion.style == Conversion::noStyle ? 0 : conversion.style);
}

// A text in the width of its type; what comes from a number is never cut to other digits.
Value fitText(std::string text, SqlType from, SqlType to, const Conversion& conversion) {
  if (to.width == 0 || text.size() <= static_cast<std::size_t>(to.width)) return text;
  const std::size_t kept = offsetOfCharacter(text, static_cast<std::size_t>(to.width));
  if (kept == text.size()) return text;
  if (isNumber(from.kind)) {
    if (conversion.cut && isWhole(from.kind)) return std::string("*");
    failOverflow(to);
  }
  if (!conversion.cut && !isBlank(std::string_view(text).substr(kept))) {
    const std::string_view start = std::string_view(text).substr(0, kept);
    const std::string where =
        conversion.target.empty() ? std::string() : concat("列“", conversion.target, "”的");
    fail(2628, concat("将截断", where, "字符串或二进制数据。最多 ", std::to_string(to.width),
                      " 个字符，截断后的值: “", start, "”。"));
  }
  text.resize(kept);
  return text;
}

Value fitBytes(Bytes bytes, SqlType to, const Conversion& conversion) {
  if (to.width == 0 || bytes.size() <= static_cast<std::size_t>(to.width)) return bytes;
  if (!conversion.cut) fail(2628, concat("将截断列“", conversion.target, "”的字符串或二进制数据。"));
  bytes.resize(static_cast<std::size_t>(to.width));
  return bytes;
}

Value convertKind(const Value& value, SqlType from, SqlType to, const Conversion& conversion) {
  if (from.kind == Kind::DateTime) {
    if (to.kind == Kind::DateTime) return value;
    return dateTimeTo(std::get<std::int64_t>(value), to, conversion);
  }
  if (const auto* text = std::get_if<std::string>(&value))
    return to.kind == Kind::Text ? value : textTo(*text, to, conversion);
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return wholeTo(*whole, to);
  if (const auto* fraction = std::get_if<double>(&value)) return fractionTo(*fraction, from, to);
  if (to.kind == Kind::Text) {
    const auto& bytes = std::get<Bytes>(value);
    return std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  }
  return value;
}

}  // namespace

Value convertValue(const Value& value, SqlType from, SqlType to, const Conversion& conversion) {
  if (isNull(value) || to.kind == Kind::Null) return value;
  requireConvertible(from, to, true);
  Value result = convertKind(value, from, to, conversion);
  if (to.kind == Kind::Text) return fitText(std::get<std::string>(std::move(result)), from, to, conversion);
  if (to.kind == Kind::Binary) return fitBytes(std::get<Bytes>(std::move(result)), to, conversion);
  return result;
}

bool isSameStorage(SqlType from, SqlType to) {
  if (from.kind == Kind::Null) return true;
  if (from.kind == to.kind) {
    if (to.kind == Kind::Decimal) return to == from;
    const bool hasWidth = to.kind == Kind::Text || to.kind == Kind::Binary;
    return !hasWidth || to.width == 0 || (from.width != 0 && from.width <= to.width);
  }
  if (isWhole(from.kind) && isWhole(to.kind)) return from.kind < to.kind && to.kind != Kind::Bit;
  return to.kind == Kind::Float && isFractional(from.kind);
}

void requireConvertible(SqlType from, SqlType to, bool isExplicit) {
  if (from.kind == Kind::Null || to.kind == Kind::Null || from.kind == to.kind) return;
  const bool binary = from.kind == Kind::Binary || to.kind == Kind::Binary;
  const bool textual = from.kind == Kind::Text || to.kind == Kind::Text;
  const bool dateToNumber = from.kind == Kind::DateTime && isNumber(to.kind);
  if (binary && isExplicit && textual) return;
  if (binary && isExplicit) failUnsupported(concat(typeName(from), " → ", typeName(to)));
  if (binary || (dateToNumber && !isExplicit))
    fail(binary && textual ? 257 : 206,
         concat("操作数类型冲突: 不能将 ", typeName(from), " 隐式转换为 ", typeName(to), "。"));
}

}  // namespace goodsbook::engine
