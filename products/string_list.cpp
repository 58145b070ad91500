#include "products/string_list.h"

#include <algorithm>

namespace goodsbook {

QString TMyStringList::DelimitedText() const {
  const auto isSpecial = [this](QChar sign) {
    return sign == Delimiter || sign == QuoteChar || sign == u'\n' || sign == u'\r';
  };
  QString all;
  for (const QString& text : *this) {
    if (&text != &constFirst()) all += Delimiter;
    const bool quoted = std::any_of(text.cbegin(), text.cend(), isSpecial);
    const bool onlyEmpty = text.isEmpty() && size() == 1;  // else it would read as no text at all
    if (!quoted && !onlyEmpty) {
      all += text;
      continue;
    }
    QString inside = text;
    all += QuoteChar + inside.replace(QuoteChar, QString(2, QuoteChar)) + QuoteChar;
  }
  return all;
}

void TMyStringList::SetDelimitedText(const QString& text) {
  clear();
  if (text.isEmpty()) return;
  QString now;
  bool inQuotes = false, begun = false;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const QChar sign = text.at(at);
    if (inQuotes) {
      const bool doubled = sign == QuoteChar && at + 1 < text.size() && text.at(at + 1) == QuoteChar;
      if (doubled) ++at;
      if (sign == QuoteChar && !doubled) {
        inQuotes = false;
      } else {
        now += sign;
      }
    } else if (sign == Delimiter) {
      append(now);
      now.clear();
      begun = false;
      continue;
    } else if (sign == QuoteChar && !begun) {
      inQuotes = true;
    } else {
      now += sign;
    }
    begun = true;
  }
  append(now);
}

}  // namespace goodsbook
