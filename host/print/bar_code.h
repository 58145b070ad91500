#pragma once

#include <QString>
#include <cstdint>
#include <vector>

#include "host/export.h"

namespace goodsbook {

// The bars of one code, in modules: the narrowest bar or gap is one module wide.
struct BarCode {
  enum class Kind { None, Ean13, Ean8, UpcA, Code128 } kind = Kind::None;
  std::vector<std::uint8_t> runs;        // bars and gaps in turn, from the first bar to the last
  int modules = 0;                       // their sum
  int quietBefore = 0, quietBehind = 0;  // white modules without which a scanner finds no code
  QString problem;                       // Chinese, empty for none: a wrong check digit, no code at all

  bool isEmpty() const { return kind == Kind::None; }
  int width() const { return quietBefore + modules + quietBehind; }
};

// The code for a text, chosen by it: EAN-13, EAN-8 and UPC-A for 13, 8 and 12 digits with a right check
// digit, Code 128 for all else that is printable ASCII. A wrong check digit is told and the text printed in
// Code 128, so that a scanner always reads what the text says. None, with the reason, for other texts.
GOODSBOOKHOST_EXPORT BarCode barCodeOf(const QString& text);

// The last digit of a number whose other digits are `digits`, as EAN and UPC count it.
GOODSBOOKHOST_EXPORT QChar checkDigitOf(QStringView digits);

}  // namespace goodsbook
