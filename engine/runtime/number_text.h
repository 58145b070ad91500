#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Numbers from and to text, as a server reads and writes them. Blanks around a number do not count.
namespace goodsbook::engine {

// Digits with a sign; nothing where the text is anything else. A number beyond 64 bits gives `overflow`.
struct WholeNumber {
  std::int64_t value = 0;
  bool overflow = false;
};
std::optional<WholeNumber> readWhole(std::string_view text);

// Digits, sign, point and exponent; `allowExponent` is off for decimals.
std::optional<double> readNumber(std::string_view text, bool allowExponent);

// The shortest text that reads back as the same number: 3.5, 100, 1e+25.
std::string shortestText(double value);
// With that many digits behind the point.
std::string fixedText(double value, int scale);

// Half away from zero, by the decimal digits that the number shows; a negative scale rounds in front of the
// point.
double roundDecimal(double value, int scale);
double truncateDecimal(double value, int scale);

}  // namespace goodsbook::engine
