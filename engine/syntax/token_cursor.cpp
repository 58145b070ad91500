#include "engine/syntax/token_cursor.h"

#include "engine/syntax/syntax_error.h"

namespace goodsbook::engine {

bool TokenCursor::atName(std::size_t ahead) const noexcept {
  const Token& token = peek(ahead);
  return token.kind == TokenKind::Quoted || (token.kind == TokenKind::Word && !isReserved(token.keyword));
}

Name TokenCursor::takeName() {
  if (!atName()) failHere();
  const Token& token = take();
  return {token.value, token.position};
}

void TokenCursor::failHere() const {
  if (atEnd() && at_ > 0) {
    Token last = previous();
    last.keyword = Keyword::None;  // a server tells 102 at the end of a batch, whatever its last word is
    throwSyntaxError(last);
  }
  throwSyntaxError(peek());
}

void TokenCursor::refuse(Keyword keyword, std::string_view what) const {
  if (at(keyword)) throwNotSupported(peek(), what);
}

}  // namespace goodsbook::engine
