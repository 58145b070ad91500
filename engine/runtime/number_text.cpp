#include "engine/runtime/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace goodsbook::engine {
namespace {

std::string_view trimmed(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::size_t digitRun(std::string_view text, std::size_t from) {
  std::size_t end = from;
  while (end < text.size() && isDigit(text[end])) ++end;
  return end - from;
}

bool hasNumberForm(std::string_view text, bool allowExponent) {
  std::size_t at = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  const std::size_t before = digitRun(text, at);
  at += before;
  std::size_t behind = 0;
  if (at < text.size() && text[at] == '.') {
    behind = digitRun(text, at + 1);
    at += 1 + behind;
  }
  if (before + behind == 0) return false;
  if (allowExponent && at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    const std::size_t digits = digitRun(text, at);
    if (digits == 0) return false;
    at += digits;
  }
  return at == text.size();
}

// Whether a text that has the form of a number and that no double holds is too great, not too small.
bool isTooGreat(std::string_view text) {
  const std::size_t mark = std::min(text.find_first_of("eE"), text.size());
  const std::string_view digits = text.substr(0, mark);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t first = std::min(digits.find_first_of("123456789"), digits.size());
  std::string_view exponentText = text.substr(std::min(mark + 1, text.size()));
  if (exponentText.starts_with('+')) exponentText.remove_prefix(1);
  int exponent = 0;
  const auto [end, error] =
      std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  if (error == std::errc::result_out_of_range) return !exponentText.starts_with('-');
  return static_cast<int>(point) - static_cast<int>(first) + exponent > 0;
}

// The digits that a number shows, as 0.d1d2d3… · 10^exponent.
struct Digits {
  std::string digits;
  int exponent = 0;
};

Digits shownDigits(double magnitude) {
  std::array<char, 40> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, std::chars_format::scientific);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const std::size_t mark = text.find('e');
  Digits result;
  for (const char c : text.substr(0, mark))
    if (isDigit(c)) result.digits.push_back(c);
  const std::string_view exponent = text.substr(mark + (text[mark + 1] == '+' ? 2 : 1));
  std::from_chars(exponent.data(), exponent.data() + exponent.size(), result.exponent);
  ++result.exponent;
  return result;
}

double cutDecimal(double value, int scale, bool roundUp) {
  if (!std::isfinite(value) || value == 0) return value;
  Digits shown = shownDigits(std::fabs(value));
  const int kept = shown.exponent + scale;
  if (kept >= static_cast<int>(shown.digits.size())) return value;
  if (kept < 0) return 0;
  const bool carry = roundUp && shown.digits[static_cast<std::size_t>(kept)] >= '5';
  std::string digits = "0" + shown.digits.substr(0, static_cast<std::size_t>(kept));
  if (carry) {
    std::size_t at = digits.size();
    while (digits[--at] == '9') digits[at] = '0';
    ++digits[at];
  }
  const std::string text = digits + "e" + std::to_string(-scale);
  double result = 0;
  std::from_chars(text.data(), text.data() + text.size(), result);
  return std::signbit(value) ? -result : result;
}

}  // namespace

std::optional<WholeNumber> readWhole(std::string_view text) {
  text = trimmed(text);
  if (text.empty()) return std::nullopt;
  const bool negative = text.front() == '-';
  const bool hasSign = negative || text.front() == '+';
  const std::string_view digits = text.substr(hasSign ? 1 : 0);
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) return std::nullopt;
  WholeNumber number;
  const std::string_view source = negative ? text : digits;
  const auto [end, error] = std::from_chars(source.data(), source.data() + source.size(), number.value);
  number.overflow = error == std::errc::result_out_of_range;
  return number;
}

std::optional<double> readNumber(std::string_view text, bool allowExponent) {
  text = trimmed(text);
  if (!hasNumberForm(text, allowExponent)) return std::nullopt;
  if (text.front() == '+') text.remove_prefix(1);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) return isTooGreat(text) ? std::optional<double>() : 0.0;
  return value;
}

std::string shortestText(double value) {
  if (value == 0) return "0";
  const double magnitude = std::fabs(value);
  const auto format =
      magnitude >= 1e-5 && magnitude < 1e16 ? std::chars_format::fixed : std::chars_format::scientific;
  std::array<char, 64> buffer{};
  const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format);
  return {buffer.data(), end};
}

std::string fixedText(double value, int scale) {
  std::array<char, 400> buffer{};
  const double rounded = roundDecimal(value, scale);
  const int length = std::snprintf(buffer.data(), buffer.size(), "%.*f", scale, rounded == 0 ? 0.0 : rounded);
  return {buffer.data(), static_cast<std::size_t>(length)};
}

double roundDecimal(double value, int scale) {
  return cutDecimal(value, scale, true);
}
double truncateDecimal(double value, int scale) {
  return cutDecimal(value, scale, false);
}

}  // namespace goodsbook::engine
