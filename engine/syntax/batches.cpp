#include "engine/syntax/batches.h"

#include <cstddef>

#include "engine/syntax/lexer.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

// Whether a word GO stands alone on its line; nothing but blanks and a comment may stand beside it.
bool isSeparator(const std::vector<Token>& tokens, std::size_t i) {
  const Token& token = tokens[i];
  if (token.kind != TokenKind::Word || !sameName(token.text, "GO")) return false;
  const bool firstOfLine = i == 0 || tokens[i - 1].position.line < token.position.line;
  const bool lastOfLine =
      tokens[i + 1].kind == TokenKind::End || tokens[i + 1].position.line > token.position.line;
  return firstOfLine && lastOfLine;
}

}  // namespace

std::vector<BatchText> splitBatches(std::string_view script) {
  if (script.starts_with(byteOrderMark)) script.remove_prefix(byteOrderMark.size());
  Script words;
  tokenize(script, words);
  const std::vector<Token>& tokens = words.tokens;
  std::vector<BatchText> batches;
  std::size_t first = 0;  // word of the batch at hand
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const bool last = tokens[i].kind == TokenKind::End;
    if (!last && !isSeparator(tokens, i)) continue;
    if (i > first) {
      const std::size_t start = tokens[first].position.offset;
      batches.push_back({script.substr(start, tokens[i].position.offset - start),
                         static_cast<int>(tokens[first].position.line)});
    }
    first = i + 1;
  }
  return batches;
}

}  // namespace goodsbook::engine
