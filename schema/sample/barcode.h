#pragma once

#include <string>
#include <string_view>

namespace goodsbook::sample {

// The check digit behind twelve digits of an EAN-13 code.
inline char ean13CheckDigit(std::string_view twelveDigits) {
  int sum = 0;
  for (std::size_t i = 0; i < 12; ++i) sum += (twelveDigits[i] - '0') * (i % 2 == 0 ? 1 : 3);
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

// The code of an item (0 to 99999) of a maker (0 to 99999): 69, five digits each, check digit.
std::string ean13(int maker, int item);

}  // namespace goodsbook::sample
