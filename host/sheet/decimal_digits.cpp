#include "host/sheet/decimal_digits.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace goodsbook {

DecimalDigits::DecimalDigits(double value) {
  constexpr int kept = 15;
  if (!std::isfinite(value)) value = std::numeric_limits<double>::max();
  const QByteArray scientific = QByteArray::number(value, 'e', kept - 1);
  const qsizetype exponent = scientific.indexOf('e');
  digits = scientific.left(exponent);
  digits.replace(".", "");
  point = value == 0 ? 1 : scientific.mid(exponent + 1).toInt() + 1;
}

QString DecimalDigits::fixed(int places) const {
  QByteArray all = digits;
  int whole = point;
  if (whole <= 0) {
    all.prepend(QByteArray(1 - whole, '0'));
    whole = 1;
  }
  const int kept = whole + places;
  const bool up = all.size() > kept && all.at(kept) >= '5';
  all = all.leftJustified(kept, '0', true);
  if (up) {
    qsizetype at = kept - 1;
    while (at >= 0 && all.at(at) == '9') all[at--] = '0';
    if (at >= 0) {
      ++all[at];
    } else {
      all.prepend('1');
      ++whole;
    }
  }
  QString text = QString::fromLatin1(all);
  if (places > 0) text.insert(whole, u'.');
  return text;
}

bool DecimalDigits::isWhole() const {
  for (qsizetype at = std::max(point, 0); at < digits.size(); ++at) {
    if (digits.at(at) != '0') return false;
  }
  return true;
}

}  // namespace goodsbook
