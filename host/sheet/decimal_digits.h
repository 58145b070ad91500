#pragma once

#include <QString>

namespace goodsbook {

// The decimal digits of a positive number, fifteen of them as spreadsheets keep: 0.DIGITS times ten to the
// `point`.
struct DecimalDigits {
  explicit DecimalDigits(double value);

  // With exactly `places` digits behind the point, rounded half up; "0.50", "12".
  QString fixed(int places) const;
  bool isWhole() const;

  QByteArray digits;
  int point = 0;
};

}  // namespace goodsbook
