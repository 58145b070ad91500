#include "host/sheet/number_format.h"

#include <algorithm>
#include <cmath>

#include "host/sheet/decimal_digits.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

bool NumberFormat::Condition::holds(double number) const {
  if (comparison == "<"_L1) return number < value;
  if (comparison == "<="_L1) return number <= value;
  if (comparison == ">"_L1) return number > value;
  if (comparison == ">="_L1) return number >= value;
  if (comparison == "<>"_L1) return number != value;
  return number == value;
}

bool NumberFormat::Section::has(Part part) const {
  return std::ranges::any_of(tokens, [part](const Token& token) { return token.part == part; });
}

NumberFormat::NumberFormat(const QString& code) {
  constexpr qsizetype longest = 1024;
  sections_ = read(code.isEmpty() || code.size() > longest ? u"General"_s : code);
}

// Of the sections for positive numbers, negative ones, zero and texts, or by their conditions. `negative` is
// cleared where the section itself says so.
const NumberFormat::Section& NumberFormat::sectionFor(double value, bool& negative) const {
  const std::size_t count = std::min<std::size_t>(sections_.size(), 3);
  const bool conditions =
      std::any_of(sections_.begin(), sections_.begin() + static_cast<std::ptrdiff_t>(count),
                  [](const Section& section) { return section.condition.has_value(); });
  if (conditions) {
    for (std::size_t i = 0; i < count; ++i) {
      const auto& condition = sections_[i].condition;
      if (condition ? condition->holds(value) : i > 0 || value > 0) {
        if (i > 0 && condition && condition->value <= 0 && condition->comparison.startsWith(u'<'))
          negative = false;
        return sections_[i];
      }
    }
    return sections_[count - 1];
  }
  if (value < 0 && count > 1) {
    negative = false;
    return sections_[1];
  }
  return sections_[value == 0 && count > 2 ? 2 : 0];
}

QString NumberFormat::number(double value, bool since1904) const {
  if (!std::isfinite(value)) return {};
  bool negative = value < 0;
  const Section& section = sectionFor(value, negative);
  if (section.has(Part::Text)) return text(generalNumber(value));
  if (section.isDate) {
    const QString shown = moment(section, value, since1904);
    return shown.isNull() ? generalNumber(value) : shown;
  }
  const bool scientific = section.has(Part::Exponent);
  QString shown = section.fraction ? fractionNumber(section, std::abs(value))
                  : scientific     ? exponentNumber(section, std::abs(value))
                                   : plainNumber(section, std::abs(value));
  if (negative) shown.prepend(u'-');
  return shown;
}

QString NumberFormat::text(const QString& value) const {
  const Section& last = sections_.back();
  if (sections_.size() < 4 && !last.has(Part::Text)) return value;
  QString shown;
  for (const Token& token : last.tokens) {
    if (token.part == Part::Text) shown += value;
    if (token.part == Part::Literal) shown += token.text;
  }
  return shown;
}

QString NumberFormat::plainNumber(const Section& section, double value) {
  for (const Token& token : section.tokens) {
    if (token.part == Part::Percent) value *= 100;
  }
  value /= std::pow(1000.0, section.divisions);
  const QString fixed = DecimalDigits(value).fixed(section.places);
  QString whole = fixed.section(u'.', 0, 0);
  QString fraction = fixed.section(u'.', 1);
  if (whole == "0"_L1) whole.clear();

  int wholePlaces = 0;
  for (const Token& token : section.tokens) {
    if (token.part == Part::Point) break;
    wholePlaces += token.part == Part::Digit;
  }
  QString shown;
  int place = wholePlaces;
  bool behindPoint = false, begun = false;
  qsizetype at = 0;
  const auto putWhole = [&](QChar sign, qsizetype left) {
    shown += sign;
    begun = true;
    if (section.grouped && left > 0 && left % 3 == 0) shown += u',';
  };
  const auto wholeDigit = [&](QChar kind) {
    // The first place takes all digits that have no place of their own.
    while (whole.size() - at > place) {
      const QChar sign = whole.at(at);
      ++at;
      putWhole(sign, whole.size() - at);
    }
    --place;
    if (whole.size() - at == place + 1) {
      const QChar sign = whole.at(at);
      ++at;
      putWhole(sign, place);
    } else if (kind == u'0' || begun) {
      putWhole(u'0', place);
    } else if (kind == u'?') {
      shown += u' ';
    }
  };
  qsizetype shownPlaces = fraction.size();
  while (shownPlaces > 0 && fraction.at(shownPlaces - 1) == u'0') --shownPlaces;
  qsizetype fractionAt = 0;
  for (const Token& token : section.tokens) {
    switch (token.part) {
      case Part::General:
        shown += generalNumber(value);
        break;
      case Part::Point:
        if (wholePlaces == 0) shown += whole;
        shown += u'.';
        behindPoint = true;
        break;
      case Part::Percent:
        shown += u'%';
        break;
      case Part::Literal:
        shown += token.text;
        break;
      case Part::Digit:
        if (!behindPoint) {
          wholeDigit(token.text.at(0));
        } else {
          if (fractionAt < shownPlaces || token.text == "0"_L1) {
            shown += fraction.at(fractionAt);
          } else if (token.text == "?"_L1) {
            shown += u' ';
          }
          ++fractionAt;
        }
        break;
      default:
        break;
    }
  }
  return shown;
}

QString NumberFormat::exponentNumber(const Section& section, double value) {
  int wholePlaces = 0, exponentPlaces = 0;
  bool behindPoint = false, behindExponent = false;
  for (const Token& token : section.tokens) {
    behindPoint = behindPoint || token.part == Part::Point;
    behindExponent = behindExponent || token.part == Part::Exponent;
    if (token.part != Part::Digit) continue;
    if (behindExponent) {
      ++exponentPlaces;
    } else if (!behindPoint) {
      ++wholePlaces;
    }
  }
  wholePlaces = std::max(wholePlaces, 1);
  const DecimalDigits digits(value);
  int exponent = value == 0 ? 0 : digits.point - 1;
  // With several places before the point the exponent is a multiple of their number.
  exponent = static_cast<int>(std::floor(static_cast<double>(exponent) / wholePlaces)) * wholePlaces;
  DecimalDigits mantissa = digits;
  mantissa.point = value == 0 ? 1 : digits.point - exponent;
  QString shown = mantissa.fixed(section.places);
  if (shown.section(u'.', 0, 0).size() > wholePlaces) {
    exponent += wholePlaces;
    mantissa.point -= wholePlaces;
    shown = mantissa.fixed(section.places);
  }
  QString sign;
  for (const Token& token : section.tokens) {
    if (token.part == Part::Exponent) sign = exponent < 0 ? u"-"_s : token.text;
  }
  return shown + u'E' + sign + QString::number(std::abs(exponent)).rightJustified(exponentPlaces, u'0');
}

QString generalNumber(double value) {
  if (!std::isfinite(value)) return {};
  constexpr int shownDigits = 10;
  const DecimalDigits digits(std::abs(value));
  QString shown;
  if (value == 0 || (digits.isWhole() && digits.point <= 21)) {
    shown = digits.fixed(0);
  } else if (digits.point > 21 || digits.point < -3) {
    DecimalDigits mantissa = digits;
    mantissa.point = 1;
    shown = mantissa.fixed(5);
    while (shown.endsWith(u'0')) shown.chop(1);
    if (shown.endsWith(u'.')) shown.chop(1);
    const int exponent = digits.point - 1;
    shown += (exponent < 0 ? u"E-"_s : u"E+"_s) + QString::number(std::abs(exponent)).rightJustified(2, u'0');
  } else {
    shown = digits.fixed(std::max(shownDigits - std::max(digits.point, 1), 0));
    if (shown.contains(u'.')) {
      while (shown.endsWith(u'0')) shown.chop(1);
      if (shown.endsWith(u'.')) shown.chop(1);
    }
  }
  return value < 0 ? u'-' + shown : shown;
}

}  // namespace goodsbook
