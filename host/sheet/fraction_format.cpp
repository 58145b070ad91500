// Numbers under formats like "# ?/?".

#include <algorithm>
#include <cmath>

#include "host/sheet/number_format.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Ratio {
  int numerator, denominator;
};

// The fraction nearest to `value` (from 0 to 1) whose denominator is at most `largest`; of equally near ones
// the simplest.
Ratio nearest(double value, int largest) {
  constexpr double noise = 1e-12;  // of two ways to reckon one distance
  Ratio best{static_cast<int>(std::lround(value)), 1};
  double distance = std::abs(value - best.numerator);
  for (int denominator = 2; denominator <= largest && distance > noise; ++denominator) {
    const int numerator = static_cast<int>(std::lround(value * denominator));
    const double here = std::abs(value - static_cast<double>(numerator) / denominator);
    if (here + noise >= distance) continue;
    best = {numerator, denominator};
    distance = here;
  }
  return best;
}

}  // namespace

QString NumberFormat::fractionNumber(const Section& section, double value) {
  const Fraction& places = *section.fraction;
  const auto begin = section.tokens.begin();
  Section head, tail;
  head.tokens.assign(begin, begin + places.numerator);
  head.grouped = section.grouped;
  tail.tokens.assign(begin + places.end, section.tokens.end());
  for (const Token& token : section.tokens) {
    if (token.part == Part::Percent) value *= 100;
  }
  std::erase_if(head.tokens, [](const Token& token) { return token.part == Part::Percent; });
  const bool mixed = head.has(Part::Digit);  // "1 1/2"; without places for the whole number "3/2"

  constexpr double mostWhole = 1e9;  // behind it a double has nothing to say about small fractions
  if (value >= mostWhole) return generalNumber(value);
  constexpr int mostDigits = 4;
  const int numeratorPlaces = places.slash - places.numerator;
  const int denominatorPlaces = places.end - places.slash - 1;
  const int largest = static_cast<int>(std::pow(10, std::min(denominatorPlaces, mostDigits))) - 1;
  double whole = std::floor(value);
  const double rest = value - whole;
  Ratio ratio = places.denominator > 0
                    ? Ratio{static_cast<int>(std::lround(rest * places.denominator)), places.denominator}
                    : nearest(rest, largest);
  if (ratio.numerator == ratio.denominator) {
    ++whole;
    ratio.numerator = 0;
  }

  QString shown;
  const QString behind = plainNumber(tail, 0);
  if (mixed && ratio.numerator == 0) {
    // The fraction's room stays empty, so that whole numbers stand under each other.
    while (head.tokens.back().part != Part::Digit) head.tokens.pop_back();
    if (whole == 0) head.tokens.back().text = u"0"_s;
    shown = plainNumber(head, whole);
    const int kept = static_cast<int>(section.tokens.size()) - static_cast<int>(tail.tokens.size()) -
                     static_cast<int>(head.tokens.size());
    return shown + QString(kept, u' ') + behind;
  }
  const qint64 numerator =
      mixed ? ratio.numerator : static_cast<qint64>(whole) * ratio.denominator + ratio.numerator;
  shown = plainNumber(head, mixed ? whole : 0);
  shown += QString::number(numerator).rightJustified(numeratorPlaces, u' ');
  shown += u'/';
  shown += QString::number(ratio.denominator).leftJustified(denominatorPlaces, u' ');
  return shown + behind;
}

}  // namespace goodsbook
