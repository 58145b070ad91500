#include "engine/server_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "engine/syntax/lexer.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

// Words that are reserved, so that they can be no names, and that do more than read and write rows.
constexpr std::array<std::string_view, 24> ownersWords = {
    "alter",  "backup",   "bulk",      "commit",     "create",         "dbcc",        "deny",    "drop",
    "grant",  "kill",     "openquery", "openrowset", "opendatasource", "reconfigure", "restore", "revert",
    "revoke", "rollback", "shutdown",  "tran",       "transaction",    "truncate",    "use",     "waitfor"};

bool beyondAscii(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

bool isWord(const Token& token, std::string_view word) {
  return token.kind == TokenKind::Word && sameName(token.text, word);
}

// GETDATE ( ) from this word on.
bool isClock(const std::vector<Token>& tokens, std::size_t at) {
  return at + 2 < tokens.size() && isWord(tokens[at], "getdate") &&
         tokens[at + 1].symbol == Symbol::LeftParen && tokens[at + 2].symbol == Symbol::RightParen;
}

}  // namespace

std::string forServer(std::string_view batch, std::string_view now) {
  Script script;
  tokenize(batch, script);
  std::string result;
  result.reserve(batch.size() + 16);
  std::size_t copied = 0;
  const auto copyUpTo = [&](std::size_t end) {
    result += batch.substr(copied, end - copied);
    copied = end;
  };
  for (std::size_t i = 0; i < script.tokens.size(); ++i) {
    const Token& token = script.tokens[i];
    if (token.kind == TokenKind::Text && beyondAscii(token.text)) {
      copyUpTo(token.position.offset);
      // A word or number may stand right before the quote and must not swallow the N.
      result += " N";
    } else if (!now.empty() && isClock(script.tokens, i)) {
      copyUpTo(token.position.offset);
      result += now;
      copied = script.tokens[i + 2].position.offset + 1;
    }
  }
  copyUpTo(batch.size());
  return result;
}

std::string_view ownersWord(std::string_view batch) {
  Script script;
  tokenize(batch, script);
  for (const Token& token : script.tokens) {
    for (std::string_view word : ownersWords) {
      if (isWord(token, word)) return token.text;
    }
  }
  return {};
}

bool standsOutsideTransactions(std::string_view batch) {
  Script script;
  tokenize(batch, script);
  const auto& tokens = script.tokens;
  if (tokens.empty()) return false;
  for (std::string_view word : {"backup", "restore", "use"}) {
    if (isWord(tokens[0], word)) return true;
  }
  return tokens.size() > 1 && isWord(tokens[1], "database") &&
         (isWord(tokens[0], "create") || isWord(tokens[0], "alter") || isWord(tokens[0], "drop"));
}

}  // namespace goodsbook::engine
