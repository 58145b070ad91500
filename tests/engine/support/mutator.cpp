#include "tests/engine/support/mutator.h"

#include "engine/syntax/keywords.h"
#include "engine/syntax/lexer.h"
#include "tests/engine/support/cases.h"

namespace goodsbook::engine::test {
namespace {

bool isLiteral(TokenKind kind) {
  return kind >= TokenKind::Text && kind <= TokenKind::Binary;
}

}  // namespace

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

std::string Mutator::nextWithOtherValues() {
  static const std::vector<std::string> values{
      "'1'",     "1",   "'x'",        "''",    "' 7 '", "7",     "1.5",          "1.50",
      "2.125",   "1e0", "N'1'",       "N'x'",  "'01'",  "0",     "'2026-01-05'", "'20260105'",
      "'a001 '", "-1",  "2147483648", "'%0%'", "'a[b'", "'5.5'", "NULL",         "0x01",
      "120",     "112", "'A001'",     "100",   "'中'",  "'true'"};
  std::string batch = any(batches_);
  for (int edits = 1 + below(2); edits > 0; --edits) {
    Script words;
    tokenize(batch, words);
    std::vector<const Token*> literals;
    for (const Token& token : words.tokens)
      if (isLiteral(token.kind)) literals.push_back(&token);
    if (literals.empty()) return batch;
    const Token& old = *literals[static_cast<std::size_t>(below(literals.size()))];
    batch.replace(old.position.offset, old.text.size(), " " + any(values) + " ");
  }
  return batch;
}

std::vector<std::string> recordedBatches() {
  std::vector<std::string> batches;
  for (const Case& recorded : recordedCases()) batches.push_back(withoutQueries(recorded.batch));
  return batches;
}

}  // namespace goodsbook::engine::test
