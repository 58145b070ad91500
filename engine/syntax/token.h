#pragma once

#include <cstdint>
#include <string_view>

namespace goodsbook::engine {

// Where something stands in its batch.
struct Position {
  std::uint32_t offset = 0;  // bytes from the start
  std::uint32_t line = 1;    // 1-based
};

enum class TokenKind : std::uint8_t {
  End,
  Word,      // a name or keyword without quotes
  Quoted,    // [name] or "name": never a keyword
  Variable,  // @name or @@name
  Text,      // '…'
  National,  // N'…'
  Integer,   // digits
  Decimal,   // digits with a point
  Float,     // with an exponent
  Binary,    // 0x…
  Symbol,    // an operator or punctuation mark
  Invalid,   // from here on the batch cannot be read; always followed by End
};

enum class Keyword : std::uint8_t;
enum class Symbol : std::uint8_t {
  None,
  LeftParen,
  RightParen,
  Comma,
  Semicolon,
  Dot,
  Plus,
  Minus,
  Star,
  Slash,
  Percent,
  Ampersand,
  Pipe,
  Caret,
  Tilde,
  Equal,
  NotEqual,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  PlusEqual,
  MinusEqual,
  StarEqual,
  SlashEqual,
  PercentEqual,
  AmpersandEqual,
  PipeEqual,
  CaretEqual,
  Colon,
};

// One word of a batch. Views point into the batch, or into the token list where quotes or brackets were
// doubled.
struct Token {
  std::string_view text;   // as written
  std::string_view value;  // without quotes, brackets, N and 0x
  Position position;
  TokenKind kind = TokenKind::End;
  Keyword keyword{};             // of a Word, Keyword::None where it is none
  Symbol symbol = Symbol::None;  // of a Symbol
  bool structural = false;       // of a literal: its value belongs to the statement's shape
  std::int32_t ordinal = -1;     // of a replaceable literal, as in Literal
  std::int16_t error = 0;        // of Invalid: the number of the server's message
};

}  // namespace goodsbook::engine
