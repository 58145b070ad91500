#include "tests/engine/support/mutator.h"

#include "engine/syntax/keywords.h"
#include "engine/syntax/lexer.h"
#include "tests/engine/support/cases.h"

namespace goodsbook::engine::test {

std::string Mutator::next() {
  std::string batch = any(batches_);
  for (int edits = 1 + below(4); edits > 0 && !batch.empty(); --edits) edit(batch);
  return batch;
}

const std::string& Mutator::any(const std::vector<std::string>& texts) {
  return texts[static_cast<std::size_t>(below(texts.size()))];
}

void Mutator::edit(std::string& batch) {
  static const std::vector<std::string> pieces{
      "'",          "''",      "(",      ")",      "[",        "]",         "\"",      ",",        ";",
      "--",         "/*",      "*/",     "N'",     "0x",       "1e",        ".",       "@",        "@@a",
      " from ",     " as ",    " on ",   " join ", " end ",    " if ",      " begin ", " select ", " case ",
      " not ",      " union ", " null ", "\r\n",   "中",       "\xE4",      "\x01",    "5",        "5where",
      " order by ", "+=",      "!<",     "*",      " exists(", " default ", " values "};
  const auto at = static_cast<std::size_t>(below(batch.size()));
  const auto length = static_cast<std::size_t>(below(12));
  switch (below(5)) {
    case 0:
      batch.erase(at, length);
      break;
    case 1:
      batch.insert(at, any(pieces));
      break;
    case 2:
      batch.replace(at, 1, any(pieces));
      break;
    case 3: {
      const std::string& other = any(batches_);
      if (!other.empty()) batch.insert(at, other.substr(static_cast<std::size_t>(below(other.size())), 30));
      break;
    }
    default:
      batch.insert(at, batch.substr(static_cast<std::size_t>(below(batch.size())), length));
  }
}

std::string Mutator::nextInOtherWords() {
  std::string batch = any(batches_);
  for (int edits = 1 + below(4); edits > 0; --edits) exchangeWord(batch);
  return batch;
}

void Mutator::exchangeWord(std::string& batch) {
  Script words;
  tokenize(batch, words);
  const Token& old = words.tokens[static_cast<std::size_t>(below(words.tokens.size()))];
  Script others;
  const std::string& other = any(batches_);
  tokenize(other, others);
  const auto isLiteral = [](TokenKind kind) { return kind >= TokenKind::Text && kind <= TokenKind::Binary; };
  std::vector<const Token*> fitting;
  for (const Token& token : others.tokens) {
    const bool bothLiterals = isLiteral(token.kind) && isLiteral(old.kind);
    const bool sameKind = token.kind == old.kind && isReserved(token.keyword) == isReserved(old.keyword);
    if (bothLiterals || sameKind) fitting.push_back(&token);
  }
  if (fitting.empty() || old.kind == TokenKind::End) return;
  const Token& chosen = *fitting[static_cast<std::size_t>(below(fitting.size()))];
  batch.replace(old.position.offset, old.text.size(), " " + std::string(chosen.text) + " ");
}

std::vector<std::string> recordedBatches() {
  std::vector<std::string> batches;
  for (const Case& recorded : recordedCases()) batches.push_back(withoutQueries(recorded.batch));
  return batches;
}

}  // namespace goodsbook::engine::test
