#include "host/forms/list_statement.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Word {
  qsizetype at;
  QString text;  // upper case
};

bool inName(QChar sign) {
  return sign.isLetterOrNumber() || sign == u'_' || sign == u'@' || sign == u'#';
}

// The end of what begins with a quote or bracket at `at`: a doubled closing sign does not end it.
qsizetype behindQuoted(const QString& text, qsizetype at) {
  const QChar closing = text[at] == u'[' ? u']' : text[at];
  for (qsizetype i = at + 1; i < text.size(); ++i) {
    if (text[i] != closing) continue;
    if (i + 1 < text.size() && text[i + 1] == closing) {
      ++i;
    } else {
      return i + 1;
    }
  }
  return text.size();
}

// The words that stand outside of quotes and parentheses.
std::vector<Word> outerWords(const QString& text) {
  std::vector<Word> words;
  int depth = 0;
  for (qsizetype i = 0; i < text.size();) {
    const QChar sign = text[i];
    if (sign == u'\'' || sign == u'"' || sign == u'[') {
      i = behindQuoted(text, i);
    } else if (inName(sign)) {
      const qsizetype start = i;
      while (i < text.size() && inName(text[i])) ++i;
      if (depth == 0) words.push_back({start, text.mid(start, i - start).toUpper()});
    } else {
      if (sign == u'(') ++depth;
      if (sign == u')') --depth;
      ++i;
    }
  }
  return words;
}

bool hasBareOr(const QString& condition) {
  const std::vector<Word> words = outerWords(condition);
  return std::any_of(words.begin(), words.end(), [](const Word& word) { return word.text == "OR"_L1; });
}

QString asTerm(const QString& condition) {
  return hasBareOr(condition) ? u'(' + condition + u')' : condition;
}

bool endsSelection(const QString& word) {
  return word == "GROUP"_L1 || word == "HAVING"_L1 || word == "ORDER"_L1;
}

}  // namespace

QString withCondition(const QString& statement, const QString& condition) {
  if (condition.trimmed().isEmpty()) return statement;
  const std::vector<Word> words = outerWords(statement);
  const auto where =
      std::find_if(words.rbegin(), words.rend(), [](const Word& word) { return word.text == "WHERE"_L1; });
  const auto from = where == words.rend() ? words.begin() : where.base();
  const auto end = std::find_if(from, words.end(), [](const Word& word) { return endsSelection(word.text); });
  const qsizetype at = end == words.end() ? statement.size() : end->at;
  const QString head = statement.left(at);
  const QString tail = end == words.end() ? QString() : u' ' + statement.mid(at);
  if (where == words.rend()) return head + u" Where "_s + condition + tail;
  constexpr qsizetype wordLength = 5;
  const QString own = statement.mid(where->at + wordLength, at - where->at - wordLength);
  const QString kept = hasBareOr(own) ? statement.left(where->at + wordLength) + u" ("_s + own + u')' : head;
  return kept + u" and "_s + asTerm(condition) + tail;
}

}  // namespace goodsbook
