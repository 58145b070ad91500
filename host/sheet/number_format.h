#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "host/export.h"

namespace goodsbook {

// A cell's number format ("#,##0.00;[Red]-#,##0.00", "yyyy/m/d", "General"): what a value looks like under
// it. Numbers are rounded as people do it, half away from zero on the decimal digits. Whole numbers without a
// format of their own are shown in full: barcodes are such numbers. Unreadable formats count as General.
class GOODSBOOKHOST_EXPORT NumberFormat {
 public:
  explicit NumberFormat(const QString& code = {});

  QString number(double value, bool since1904 = false) const;
  QString text(const QString& value) const;

 private:
  enum class Part {
    Literal,
    Slash,  // only while a format is read
    Digit,  // of the kind in `text`: 0 # ?
    Point,
    Percent,
    Exponent,
    General,
    Text,
    Year,
    Month,
    Day,
    ChineseWeekday,
    Hour,
    Minute,
    Second,
    SecondFraction,
    HalfDay,
    Elapsed,  // hours, minutes or seconds in all, by the letter in `text`
  };
  struct Token {
    Part part = Part::Literal;
    QString text = {};
    int count = 0;
  };
  struct Condition {
    QString comparison;
    double value = 0;
    bool holds(double number) const;
  };
  // Of a section that shows fractions: the places of its parts among the tokens.
  struct Fraction {
    int numerator = 0, slash = 0, end = 0;  // `end` is behind the denominator
    int denominator = 0;                    // fixed by the format; 0: the best one with so many digits
  };
  struct Section {
    std::vector<Token> tokens;
    std::optional<Condition> condition;
    std::optional<Fraction> fraction;
    bool isDate = false;
    bool chinese = false;  // names of months and days
    bool grouped = false;
    int divisions = 0;  // by a thousand each
    int places = 0;     // digits behind the point
    bool has(Part part) const;
  };
  class Reader;

  const Section& sectionFor(double value, bool& negative) const;
  static std::vector<Section> read(const QString& code);
  static QString fractionNumber(const Section& section, double value);
  static QString plainNumber(const Section& section, double value);
  static QString exponentNumber(const Section& section, double value);
  static QString moment(const Section& section, double value, bool since1904);

  std::vector<Section> sections_;
};

// `value` without a format: whole numbers in full, others with up to ten digits.
GOODSBOOKHOST_EXPORT QString generalNumber(double value);

// The format behind a number that files use instead of a text, as a Chinese system has it; empty for none.
GOODSBOOKHOST_EXPORT QString builtinNumberFormat(int number);

}  // namespace goodsbook
