#include "tests/odbc/engine_driver/server_words.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "engine/syntax/lexer.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine_driver {
namespace {

using engine::sameName;
using engine::Symbol;
using engine::Token;
using engine::TokenKind;

constexpr std::array<std::string_view, 5> settingsWithValue = {"language", "dateformat", "datefirst",
                                                               "lock_timeout", "textsize"};
constexpr std::array<std::string_view, 10> lockHints = {
    "nolock",  "readcommitted", "readcommittedlock", "readpast", "repeatableread",
    "rowlock", "tablock",       "updlock",           "holdlock", "xlock"};

constexpr std::array<std::string_view, 3> definitionViews = {"databases", "objects", "tables"};

class Words {
 public:
  explicit Words(std::string_view batch) : batch_(batch) { engine::tokenize(batch, script_); }

  std::size_t size() const { return script_.tokens.size() - 1; }  // without the end
  const Token& operator[](std::size_t i) const { return script_.tokens[std::min(i, size())]; }
  bool is(std::size_t i, std::string_view word) const {
    const TokenKind kind = (*this)[i].kind;
    return (kind == TokenKind::Word || kind == TokenKind::Variable) && sameName((*this)[i].text, word);
  }
  template <typename Names>
  bool isAny(std::size_t i, const Names& names) const {
    return std::any_of(names.begin(), names.end(), [&](std::string_view name) { return is(i, name); });
  }
  bool isSymbol(std::size_t i, Symbol symbol) const { return (*this)[i].symbol == symbol; }
  // Behind the word.
  std::size_t end(std::size_t i) const { return (*this)[i].position.offset + (*this)[i].text.size(); }

 private:
  std::string_view batch_;
  engine::Script script_;
};

void blank(std::string& text, std::size_t from, std::size_t to) {
  for (std::size_t i = from; i < to; ++i) {
    if (text[i] != '\n') text[i] = ' ';
  }
}

bool isTransaction(const Words& words, std::size_t i) {
  return words.is(i, "transaction") || words.is(i, "tran");
}

// How many words of a setting stand from here on that only a server knows; 0 for none.
std::size_t settingLength(const Words& words, std::size_t i) {
  if (!words.is(i, "set")) return 0;
  if (words.isAny(i + 1, settingsWithValue)) return words.isSymbol(i + 2, Symbol::Minus) ? 4 : 3;
  return words.is(i + 1, "transaction") && words.is(i + 2, "isolation") ? 6 : 0;
}

// The same for WITH (hint, …).
std::size_t hintLength(const Words& words, std::size_t i) {
  if (!words.is(i, "with") || !words.isSymbol(i + 1, Symbol::LeftParen)) return 0;
  std::size_t at = i + 2;
  while (words.isAny(at, lockHints) || words.isSymbol(at, Symbol::Comma)) ++at;
  return words.isSymbol(at, Symbol::RightParen) ? at + 1 - i : 0;
}

}  // namespace

std::string asPlainLiteralsArrive(std::string_view batch) {
  const Words words(batch);
  std::string text;
  std::size_t copied = 0;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const Token& token = words[i];
    if (token.kind != TokenKind::Text) continue;
    text += batch.substr(copied, token.position.offset - copied);
    for (const char c : token.text) {
      const auto byte = static_cast<unsigned char>(c);
      const bool continues = (byte & 0xC0U) == 0x80U;
      if (!continues) text += byte < 0x80U ? c : '?';
    }
    copied = words.end(i);
  }
  return text.append(batch.substr(copied));
}

TransactionWord transactionWord(std::string_view batch) {
  const Words words(batch);
  if (words.size() == 2 && isTransaction(words, 1)) {
    if (words.is(0, "begin")) return TransactionWord::Begin;
    if (words.is(0, "commit")) return TransactionWord::Commit;
    if (words.is(0, "rollback")) return TransactionWord::Rollback;
  }
  const bool conditional = words.size() == 6 && words.is(0, "if") && words.is(1, "@@trancount") &&
                           words.isSymbol(2, Symbol::Greater) && words.is(4, "rollback") &&
                           isTransaction(words, 5);
  return conditional ? TransactionWord::RollbackIfOpen : TransactionWord::None;
}

EngineBatch withoutServerWords(std::string_view batch) {
  const Words words(batch);
  EngineBatch result{.text = std::string(batch)};
  for (std::size_t i = 0; i < words.size();) {
    const std::size_t length = std::max(settingLength(words, i), hintLength(words, i));
    if (length == 0) {
      ++i;
      continue;
    }
    if (words.is(i + 1, "lock_timeout")) {
      const std::string_view value = words[i + length - 1].text;
      int milliseconds = 0;
      std::from_chars(value.data(), value.data() + value.size(), milliseconds);
      result.lockMilliseconds = milliseconds;
    }
    blank(result.text, words[i].position.offset, words.end(i + length - 1));
    i += length;
  }
  return result;
}

std::optional<DatabaseStatement> databaseStatement(std::string_view batch) {
  const Words words(batch);
  if (!words.is(1, "database") || words.size() < 3) return std::nullopt;
  const std::string name(words[2].value);
  if (words.is(0, "create")) return DatabaseStatement{DatabaseStatement::Kind::Create, name};
  if (words.is(0, "alter")) return DatabaseStatement{DatabaseStatement::Kind::Alter, name};
  if (words.is(0, "drop")) return DatabaseStatement{DatabaseStatement::Kind::Drop, name};
  return std::nullopt;
}

std::vector<std::string> truncatedTables(std::string_view batch) {
  const Words words(batch);
  std::vector<std::string> tables;
  for (std::size_t i = 0; i < words.size();) {
    if (words.isSymbol(i, Symbol::Semicolon)) {
      ++i;
      continue;
    }
    if (!words.is(i, "truncate") || !words.is(i + 1, "table") || i + 2 >= words.size()) return {};
    tables.emplace_back(words[i + 2].value);
    i += 3;
  }
  return tables;
}

std::optional<std::string> definitionsQuery(std::string_view batch) {
  const Words words(batch);
  std::string text(batch);
  bool found = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words.is(i, "db_id") && words.isSymbol(i + 2, Symbol::RightParen)) {
      blank(text, words[i].position.offset, words.end(i + 2));
      text[words[i].position.offset] = '1';
    }
    if (!words.is(i, "sys") || !words.isSymbol(i + 1, Symbol::Dot)) continue;
    if (!words.isAny(i + 2, definitionViews)) continue;
    blank(text, words[i].position.offset, words.end(i + 1));
    found = true;
  }
  return found ? std::optional(text) : std::nullopt;
}

}  // namespace goodsbook::engine_driver
