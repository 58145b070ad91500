#include "engine/compile/literals.h"

#include <algorithm>
#include <limits>

#include "engine/runtime/failure.h"
#include "engine/runtime/number_text.h"

namespace goodsbook::engine {
namespace {

int digitValue(char c) {
  return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
}

Bytes bytesOf(std::string_view hex) {
  Bytes bytes;
  bytes.reserve((hex.size() + 1) / 2);
  int high = hex.size() % 2 == 1 ? 0 : -1;  // 0xF is 0x0F
  for (const char c : hex) {
    if (high < 0) {
      high = digitValue(c);
    } else {
      bytes.push_back(static_cast<std::byte>(high * 16 + digitValue(c)));
      high = -1;
    }
  }
  return bytes;
}

[[noreturn]] void failRange(std::string_view text) {
  fail(1007, concat("数字 '", text, "' 超出数值的范围。"), 15);
}

bool isInt(std::string_view text) {
  const auto number = readWhole(text);
  return number && !number->overflow && number->value <= std::numeric_limits<std::int32_t>::max();
}

}  // namespace

SqlType literalType(LiteralKind kind, std::string_view text) {
  switch (kind) {
    case LiteralKind::Text:
    case LiteralKind::NationalText:
      return {Kind::Text};
    case LiteralKind::Integer:
      if (isInt(text)) return {Kind::Int};
      return {Kind::Decimal, static_cast<int>(text.size()), 0};
    case LiteralKind::Decimal: {
      const std::size_t point = text.find('.');
      const auto scale = static_cast<int>(text.size() - point - 1);
      return {Kind::Decimal, std::max(static_cast<int>(text.size()) - 1, 1), scale};
    }
    case LiteralKind::Float:
      return {Kind::Float};
    case LiteralKind::Binary:
      return {Kind::Binary};
  }
  return {};
}

Value literalValue(LiteralKind kind, std::string_view text, bool negated) {
  switch (kind) {
    case LiteralKind::Text:
    case LiteralKind::NationalText:
      return std::string(text);
    case LiteralKind::Integer:
      if (isInt(text)) return negated ? -readWhole(text)->value : readWhole(text)->value;
      [[fallthrough]];
    case LiteralKind::Decimal:
    case LiteralKind::Float: {
      const auto number = readNumber(text, true);
      if (!number) failRange(text);
      return negated ? -*number : *number;
    }
    case LiteralKind::Binary:
      return bytesOf(text);
  }
  return {};
}

std::int64_t literalWhole(const Literal& literal) {
  const auto number = readWhole(literal.value);
  if (!number || number->overflow) failRange(literal.value);
  return number->value;
}

}  // namespace goodsbook::engine
