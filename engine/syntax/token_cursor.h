#pragma once

#include <cstddef>
#include <string_view>

#include "engine/syntax/ast.h"
#include "engine/syntax/keywords.h"

namespace goodsbook::engine {

// Reads the words of a batch one after the other. What is expected and not there is a syntax error.
class TokenCursor {
 protected:
  explicit TokenCursor(Script& script) : script_(script) {}

  const Token& peek(std::size_t ahead = 0) const noexcept {
    const std::size_t last = script_.tokens.size() - 1;
    return script_.tokens[at_ + ahead < last ? at_ + ahead : last];
  }
  const Token& previous() const noexcept { return script_.tokens[at_ == 0 ? 0 : at_ - 1]; }
  std::size_t index() const noexcept { return at_; }
  bool atEnd() const noexcept { return peek().kind == TokenKind::End; }
  Position position() const noexcept { return peek().position; }

  const Token& take() noexcept {
    const Token& token = peek();
    if (token.kind != TokenKind::End) ++at_;
    return token;
  }
  // Takes a word that belongs to the statement's shape as it is written.
  const Token& takeStructural() noexcept {
    script_.tokens[at_].structural = true;
    return take();
  }

  bool at(Keyword keyword, std::size_t ahead = 0) const noexcept { return peek(ahead).keyword == keyword; }
  bool at(Symbol symbol, std::size_t ahead = 0) const noexcept { return peek(ahead).symbol == symbol; }
  bool at(TokenKind kind, std::size_t ahead = 0) const noexcept { return peek(ahead).kind == kind; }

  template <class What>
  bool accept(What what) noexcept {
    if (!at(what)) return false;
    take();
    return true;
  }
  template <class What>
  const Token& expect(What what) {
    if (!at(what)) failHere();
    return take();
  }

  // A word that can be a name: in brackets or quotes, or not reserved.
  bool atName(std::size_t ahead = 0) const noexcept;
  Name takeName();

  // Syntax error at the next word; at the end of the batch the last word is the one that is told.
  [[noreturn]] void failHere() const;

  // Fails with error 40510 where one of these words comes next.
  void refuse(Keyword keyword, std::string_view what) const;

  Script& script_;

 private:
  std::size_t at_ = 0;
};

}  // namespace goodsbook::engine
