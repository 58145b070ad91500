#include "host/sheet/number_format.h"

#include <algorithm>
#include <cmath>

#include "host/sheet/decimal_digits.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

// Reads a format's text into sections of tokens.
class NumberFormat::Reader {
 public:
  explicit Reader(const QString& code) : code_(code) {}

  std::vector<Section> sections() {
    while (at_ < code_.size()) step();
    endSection();
    return std::move(done_);
  }

 private:
  void add(Part part, const QString& text = {}, int count = 1) { now_.tokens.push_back({part, text, count}); }

  // How often the sign here is repeated, in either case.
  int run() {
    const QChar sign = code_.at(at_).toLower();
    int count = 0;
    while (at_ < code_.size() && code_.at(at_).toLower() == sign) {
      ++count;
      ++at_;
    }
    return count;
  }

  bool take(QStringView word) {
    if (!QStringView(code_).mid(at_).startsWith(word, Qt::CaseInsensitive)) return false;
    at_ += word.size();
    return true;
  }

  void step() {
    if (take(u"General") || take(u"G/通用格式")) return add(Part::General);
    if (take(u"AM/PM")) return half(u"AM/PM"_s);
    if (take(u"A/P")) return half(u"A/P"_s);
    if (take(u"上午/下午")) return half(u"上午/下午"_s);
    const QChar sign = code_.at(at_);
    switch (sign.unicode()) {
      case u';':
        ++at_;
        return endSection();
      case u'"':
        return quoted();
      case u'\\':
      case u'!':
        if (at_ + 1 < code_.size()) add(Part::Literal, code_.at(at_ + 1));
        at_ += 2;
        return;
      case u'_':  // room of a sign's width
        add(Part::Literal, u" "_s);
        at_ += 2;
        return;
      case u'*':  // fills the cell's width
        at_ += 2;
        return;
      case u'[':
        return bracket();
      case u'@':
        ++at_;
        return add(Part::Text);
      case u'%':
        ++at_;
        return add(Part::Percent);
      case u'0':
      case u'#':
      case u'?':
        ++at_;
        return digit(sign);
      case u'.':
        ++at_;
        return point();
      case u',':
        ++at_;
        return comma();
      case u'E':
      case u'e':
        if (exponent()) return;
        break;
      default:
        break;
    }
    dateOrLiteral(sign);
  }

  void half(const QString& words) {
    now_.isDate = true;
    add(Part::HalfDay, words);
  }

  void quoted() {
    const qsizetype end = code_.indexOf(u'"', at_ + 1);
    const qsizetype last = end < 0 ? code_.size() : end;
    add(Part::Literal, code_.mid(at_ + 1, last - at_ - 1));
    at_ = last + 1;
  }

  void digit(QChar kind) {
    if (commas_ > 0 && sawDigit_ && !sawPoint_) now_.grouped = true;
    commas_ = 0;
    sawDigit_ = true;
    if (sawPoint_ && !now_.has(Part::Exponent)) ++now_.places;
    add(Part::Digit, kind);
  }

  void point() {
    if (now_.isDate && at_ < code_.size() && code_.at(at_) == u'0') {
      add(Part::SecondFraction, {}, run());
      return;
    }
    if (sawPoint_) return add(Part::Literal, u"."_s);
    sawPoint_ = true;
    add(Part::Point);
  }

  // Between digits: groups of thousands; behind the last one: a division.
  void comma() {
    if (sawDigit_ && !now_.isDate) {
      ++commas_;
    } else {
      add(Part::Literal, u","_s);
    }
  }

  bool exponent() {
    if (!sawDigit_ || at_ + 1 >= code_.size()) return false;
    const QChar next = code_.at(at_ + 1);
    if (next != u'+' && next != u'-') return false;
    add(Part::Exponent, next == u'+' ? u"+"_s : QString());
    at_ += 2;
    return true;
  }

  void bracket() {
    const qsizetype end = code_.indexOf(u']', at_);
    if (end < 0) {
      at_ = code_.size();
      return;
    }
    const QString inside = code_.mid(at_ + 1, end - at_ - 1);
    at_ = end + 1;
    if (inside.isEmpty()) return;
    const QChar first = inside.at(0).toLower();
    if (first == u'$') return locale(inside);
    if (u"<>="_s.contains(first)) return condition(inside);
    const bool repeated = std::ranges::all_of(inside, [&](QChar sign) { return sign.toLower() == first; });
    if (repeated && u"hms"_s.contains(first)) {
      now_.isDate = true;
      add(Part::Elapsed, first, static_cast<int>(inside.size()));
    }
  }

  void locale(const QString& inside) {
    const qsizetype dash = inside.indexOf(u'-');
    const QString currency = inside.mid(1, dash < 0 ? -1 : dash - 1);
    if (!currency.isEmpty()) add(Part::Literal, currency);
    bool isHex = false;
    const uint place = dash < 0 ? 0 : inside.mid(dash + 1).section(u',', 0, 0).toUInt(&isHex, 16);
    if (place == 0xF800 || place == 0xF400) {  // the system's own long date, its own time
      code_ = place == 0xF800 ? u"yyyy\"年\"m\"月\"d\"日\""_s : u"h:mm:ss"_s;
      at_ = 0;
      return;
    }
    constexpr uint languageBits = 0x3FF, chinese = 0x04;
    if (isHex && (place & languageBits) == chinese) now_.chinese = true;
  }

  void condition(const QString& inside) {
    qsizetype signs = 0;
    while (signs < inside.size() && u"<>="_s.contains(inside.at(signs))) ++signs;
    bool isNumber = false;
    const double value = inside.mid(signs).toDouble(&isNumber);
    if (isNumber) now_.condition = Condition{inside.left(signs), value};
  }

  void dateOrLiteral(QChar sign) {
    switch (sign.toLower().unicode()) {
      case u'y':
      case u'e':
        return date(Part::Year);
      case u'm':
        return date(Part::Month);
      case u'd':
        return date(Part::Day);
      case u'h':
        return date(Part::Hour);
      case u's':
        return date(Part::Second);
      case u'a':
        return date(Part::ChineseWeekday);
      default:
        ++at_;
        add(Part::Literal, sign);
    }
  }

  void date(Part part) {
    now_.isDate = true;
    const int count = run();
    add(part, {}, count);
  }

  // An m is minutes behind hours and before seconds.
  void settleMinutes() {
    const auto isTime = [](const Token& token, Part part, QStringView elapsed) {
      return token.part == part || (token.part == Part::Elapsed && token.text == elapsed);
    };
    std::vector<Token*> dates;
    for (Token& token : now_.tokens) {
      const bool counts = token.part != Part::Literal && token.part != Part::HalfDay;
      if (counts) dates.push_back(&token);
    }
    for (std::size_t i = 0; i < dates.size(); ++i) {
      if (dates[i]->part != Part::Month || dates[i]->count > 2) continue;
      const bool behindHours = i > 0 && isTime(*dates[i - 1], Part::Hour, u"h");
      const bool beforeSeconds = i + 1 < dates.size() && isTime(*dates[i + 1], Part::Second, u"s");
      if (behindHours || beforeSeconds) dates[i]->part = Part::Minute;
    }
  }

  // "# ?/?": prices and codes are not written so.
  bool isFraction() const {
    bool behindDigit = false;
    for (const Token& token : now_.tokens) {
      if (behindDigit && token.part == Part::Literal && token.text == "/"_L1) return true;
      behindDigit = token.part == Part::Digit;
    }
    return false;
  }

  void endSection() {
    now_.divisions = commas_;
    if (now_.isDate) {
      settleMinutes();
    } else if (isFraction()) {
      now_.tokens = {{Part::General, {}, 1}};
    }
    done_.push_back(std::move(now_));
    now_ = {};
    commas_ = 0;
    sawDigit_ = sawPoint_ = false;
  }

  QString code_;
  qsizetype at_ = 0;
  std::vector<Section> done_;
  Section now_;
  int commas_ = 0;
  bool sawDigit_ = false, sawPoint_ = false;
};

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
  sections_ = Reader(code.isEmpty() || code.size() > longest ? u"General"_s : code).sections();
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
  QString shown =
      scientific ? exponentNumber(section, std::abs(value)) : plainNumber(section, std::abs(value));
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
