#include "engine/syntax/lexer.h"

#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "engine/syntax/keywords.h"

namespace goodsbook::engine {
namespace {

enum CharClass : std::uint8_t { Other = 0, Blank = 1, Digit = 2, WordStart = 4, WordPart = 8, HexDigit = 16 };

constexpr auto classes = [] {
  std::array<std::uint8_t, 256> table{};
  for (unsigned c = 0; c < table.size(); ++c) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80;
    if (c <= ' ') table[c] = Blank;
    if (c >= '0' && c <= '9') table[c] = Digit | WordPart | HexDigit;
    if (letter || c == '#') table[c] = WordStart | WordPart;
    if (c == '@' || c == '$') table[c] = WordPart;
    if ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')) table[c] |= HexDigit;
  }
  return table;
}();

constexpr bool is(char c, CharClass wanted) noexcept {
  return (classes[static_cast<unsigned char>(c)] & wanted) != 0;
}

// Marks of one character, by that character.
constexpr auto marks = [] {
  std::array<Symbol, 256> table{};
  table['('] = Symbol::LeftParen;
  table[')'] = Symbol::RightParen;
  table[','] = Symbol::Comma;
  table[';'] = Symbol::Semicolon;
  table['.'] = Symbol::Dot;
  table['+'] = Symbol::Plus;
  table['-'] = Symbol::Minus;
  table['*'] = Symbol::Star;
  table['/'] = Symbol::Slash;
  table['%'] = Symbol::Percent;
  table['&'] = Symbol::Ampersand;
  table['|'] = Symbol::Pipe;
  table['^'] = Symbol::Caret;
  table['~'] = Symbol::Tilde;
  table['='] = Symbol::Equal;
  table['<'] = Symbol::Less;
  table['>'] = Symbol::Greater;
  table[':'] = Symbol::Colon;
  return table;
}();

struct Pair {
  char first;
  char second;
  Symbol symbol;
};
constexpr auto pairs = std::to_array<Pair>({
    {'<', '>', Symbol::NotEqual},
    {'!', '=', Symbol::NotEqual},
    {'<', '=', Symbol::LessEqual},
    {'>', '=', Symbol::GreaterEqual},
    {'!', '<', Symbol::GreaterEqual},
    {'!', '>', Symbol::LessEqual},
    {'+', '=', Symbol::PlusEqual},
    {'-', '=', Symbol::MinusEqual},
    {'*', '=', Symbol::StarEqual},
    {'/', '=', Symbol::SlashEqual},
    {'%', '=', Symbol::PercentEqual},
    {'&', '=', Symbol::AmpersandEqual},
    {'|', '=', Symbol::PipeEqual},
    {'^', '=', Symbol::CaretEqual},
});

class Lexer {
 public:
  Lexer(std::string_view batch, Script& script) : batch_(batch), script_(script) {
    script_.tokens.reserve(batch.size() / 3 + 16);
  }

  void run() {
    while (skipBlanks()) {
      if (!readWord()) break;
    }
    at_ = batch_.size();
    begin();
    add(TokenKind::End, {});
  }

 private:
  char look(std::size_t ahead = 0) const noexcept {
    return at_ + ahead < batch_.size() ? batch_[at_ + ahead] : '\0';
  }
  bool atEnd() const noexcept { return at_ >= batch_.size(); }

  void step() noexcept {
    if (batch_[at_] == '\n') ++line_;
    ++at_;
  }

  // Goes to the next word; false at the end of the batch or where a comment does not end.
  bool skipBlanks() {
    while (!atEnd()) {
      const char c = look();
      if (is(c, Blank)) {
        step();
      } else if (c == '-' && look(1) == '-') {
        while (!atEnd() && look() != '\n') ++at_;
      } else if (c == '/' && look(1) == '*') {
        if (!skipComment()) return false;
      } else {
        return true;
      }
    }
    return false;
  }

  bool skipComment() {
    begin();
    int open = 0;
    while (!atEnd()) {
      if (look() == '/' && look(1) == '*') {
        ++open;
        at_ += 2;
      } else if (look() == '*' && look(1) == '/') {
        at_ += 2;
        if (--open == 0) return true;
      } else {
        step();
      }
    }
    return fail(113, {});
  }

  bool readWord() {
    begin();
    const char c = look();
    if ((c == 'N' || c == 'n') && look(1) == '\'') {
      ++at_;
      return readQuoted('\'', TokenKind::National);
    }
    if (is(c, WordStart)) return readName();
    if (c == '\'') return readQuoted('\'', TokenKind::Text);
    if (is(c, Digit) || (c == '.' && is(look(1), Digit))) return readNumber();
    if (c == '[') return readQuoted(']', TokenKind::Quoted);
    if (c == '"') return readQuoted('"', TokenKind::Quoted);
    if (c == '@') return readVariable();
    return readOperator();
  }

  bool readName() {
    while (!atEnd() && is(look(), WordPart)) ++at_;
    Token& token = add(TokenKind::Word, batch_.substr(start_, at_ - start_));
    token.keyword = keywordOf(token.text);
    return true;
  }

  bool readVariable() {
    ++at_;
    while (!atEnd() && is(look(), WordPart)) ++at_;
    if (at_ - start_ == 1) return fail(102, batch_.substr(start_, 1));
    add(TokenKind::Variable, batch_.substr(start_, at_ - start_));
    return true;
  }

  // A number ends where a letter begins; an e is its exponent only with digits behind.
  bool readNumber() {
    if (look() == '0' && (look(1) == 'x' || look(1) == 'X')) {
      at_ += 2;
      const std::size_t digits = at_;
      while (!atEnd() && is(look(), HexDigit)) ++at_;
      add(TokenKind::Binary, batch_.substr(digits, at_ - digits));
      return true;
    }
    TokenKind kind = TokenKind::Integer;
    while (is(look(), Digit)) ++at_;
    if (look() == '.') {
      kind = TokenKind::Decimal;
      ++at_;
      while (is(look(), Digit)) ++at_;
    }
    if (look() == 'e' || look() == 'E') {
      const std::size_t sign = look(1) == '+' || look(1) == '-' ? 1 : 0;
      if (is(look(1 + sign), Digit)) {
        kind = TokenKind::Float;
        at_ += 1 + sign;
        while (is(look(), Digit)) ++at_;
      }
    }
    add(kind, batch_.substr(start_, at_ - start_));
    return true;
  }

  // A text or name up to `close`; two of them stand for one inside.
  bool readQuoted(char close, TokenKind kind) {
    ++at_;
    const std::size_t first = at_;
    bool doubled = false;
    while (!atEnd()) {
      if (look() == close) {
        if (look(1) != close) break;
        doubled = true;
        ++at_;
      }
      step();
    }
    std::string_view value = batch_.substr(first, at_ - first);
    if (atEnd()) return fail(105, value);
    ++at_;
    if (kind == TokenKind::Quoted && value.empty()) return fail(1038, {});
    add(kind, doubled ? undouble(value, close) : value);
    return true;
  }

  std::string_view undouble(std::string_view value, char close) {
    std::string text;
    text.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
      text += value[i];
      if (value[i] == close) ++i;
    }
    return script_.unescaped.emplace_back(std::move(text));
  }

  bool readOperator() {
    const char first = look();
    const char second = look(1);
    if (second == '=' || second == '>' || second == '<') {
      for (const Pair& pair : pairs) {
        if (pair.first != first || pair.second != second) continue;
        addSymbol(2, pair.symbol);
        return true;
      }
    }
    const Symbol symbol = marks[static_cast<unsigned char>(first)];
    if (symbol == Symbol::None) return fail(102, batch_.substr(at_, 1));
    addSymbol(1, symbol);
    return true;
  }

  void addSymbol(std::size_t length, Symbol symbol) {
    at_ += length;
    add(TokenKind::Symbol, batch_.substr(start_, length)).symbol = symbol;
  }

  void begin() noexcept {
    start_ = at_;
    startLine_ = line_;
  }

  Token& add(TokenKind kind, std::string_view value) {
    Token& token = script_.tokens.emplace_back();
    token.text = batch_.substr(start_, at_ - start_);
    token.value = value;
    token.position = {static_cast<std::uint32_t>(start_), startLine_};
    token.kind = kind;
    return token;
  }

  bool fail(std::int16_t number, std::string_view value) {
    add(TokenKind::Invalid, value).error = number;
    return false;
  }

  std::string_view batch_;
  Script& script_;
  std::size_t at_ = 0;
  std::size_t start_ = 0;
  std::uint32_t line_ = 1;
  std::uint32_t startLine_ = 1;
};

}  // namespace

void tokenize(std::string_view batch, Script& script) {
  Lexer(batch, script).run();
}

}  // namespace goodsbook::engine
