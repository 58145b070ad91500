#pragma once

#include <QString>
#include <QStringList>

namespace goodsbook {

// A list of texts that can be written as one text and read back: a,"b,c","say ""no""". Blanks and line ends
// belong to the texts.
class TMyStringList : public QStringList {
 public:
  using QStringList::QStringList;

  QChar Delimiter = u',';
  QChar QuoteChar = u'"';

  // The texts with delimiters between them; those with a delimiter, quote or line end in them are quoted.
  QString DelimitedText() const;
  // Replaces the list. What stands behind a closing quote belongs to its text, and a quote that is never
  // closed ends with `text`. An empty text is an empty list.
  void SetDelimitedText(const QString& text);
};

}  // namespace goodsbook
