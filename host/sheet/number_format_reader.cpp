// Reads a number format's text into sections of tokens.

#include <algorithm>

#include "host/sheet/number_format.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

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
      case u'/':
        ++at_;
        return add(Part::Slash, sign);
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

  // "# ?/?", "0 ?/16": where numerator and denominator stand. A bare stroke anywhere else is only a sign.
  void settleFraction() {
    std::vector<Token>& tokens = now_.tokens;
    const auto slash = std::ranges::find(tokens, Part::Slash, &Token::part);
    for (Token& token : tokens) {
      if (token.part == Part::Slash) token.part = Part::Literal;
    }
    if (now_.isDate || slash == tokens.end() || now_.has(Part::Point)) return;
    const auto isPlace = [](const Token& token) { return token.part == Part::Digit; };
    auto from = slash;
    while (from != tokens.begin() && isPlace(*(from - 1))) --from;
    auto to = slash + 1;
    QString digits;
    const auto isFixedDigit = [&] {
      const bool zero = !digits.isEmpty() && to->part == Part::Digit && to->text == "0"_L1;
      return zero || (to->part == Part::Literal && to->text.size() == 1 && to->text.at(0).isDigit());
    };
    while (to != tokens.end() && (isFixedDigit() || (digits.isEmpty() && isPlace(*to)))) {
      if (isFixedDigit()) digits += to->text;
      ++to;
    }
    if (from == slash || to == slash + 1) return;
    constexpr qsizetype longest = 4;
    if (digits.size() > longest) return;
    now_.fraction = Fraction{.numerator = static_cast<int>(from - tokens.begin()),
                             .slash = static_cast<int>(slash - tokens.begin()),
                             .end = static_cast<int>(to - tokens.begin()),
                             .denominator = digits.toInt()};
  }

  void endSection() {
    now_.divisions = commas_;
    if (now_.isDate) settleMinutes();
    settleFraction();
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

std::vector<NumberFormat::Section> NumberFormat::read(const QString& code) {
  return Reader(code).sections();
}

}  // namespace goodsbook
