#include "engine/syntax/sql_writer.h"

#include "engine/syntax/keywords.h"
#include "engine/syntax/lexer.h"

namespace goodsbook::engine {
namespace {

// Whether the lexer would read the name as one word that is no keyword.
bool isPlain(std::string_view name) {
  Script words;
  tokenize(name, words);
  const Token& first = words.tokens.front();
  return first.kind == TokenKind::Word && first.text.size() == name.size() && first.keyword == Keyword::None;
}

bool isCallable(std::string_view function) {
  switch (keywordOf(function)) {
    case Keyword::Coalesce:
    case Keyword::Nullif:
    case Keyword::Left:
    case Keyword::Right:
      return true;
    default:
      return isPlain(function);
  }
}

}  // namespace

void SqlWriter::blank() {
  if (!glued_) sql_ += ' ';
  glued_ = false;
}

void SqlWriter::word(std::string_view text) {
  blank();
  sql_ += text;
}

void SqlWriter::quoted(std::string_view value, char close) {
  for (char c : value) {
    sql_ += c;
    if (c == close) sql_ += c;
  }
  sql_ += close;
}

void SqlWriter::name(std::string_view name) {
  blank();
  if (isPlain(name)) {
    sql_ += name;
  } else {
    sql_ += '[';
    quoted(name, ']');
  }
}

void SqlWriter::object(const ObjectName& object) {
  if (!object.database.empty()) {
    name(object.database.text);
    dot();
  }
  if (!object.schema.empty()) name(object.schema.text);
  if (!object.schema.empty() || !object.database.empty()) dot();
  name(object.name.text);
}

void SqlWriter::text(std::string_view value) {
  blank();
  sql_ += '\'';
  quoted(value, '\'');
}

void SqlWriter::nationalText(std::string_view value) {
  blank();
  sql_ += "N'";
  quoted(value, '\'');
}

void SqlWriter::call(std::string_view function) {
  if (isCallable(function)) {
    word(function);
  } else {
    name(function);
  }
  glued_ = true;
}

void SqlWriter::open() {
  blank();
  sql_ += '(';
  glued_ = true;
}

void SqlWriter::close() {
  sql_ += ')';
  glued_ = false;
}

void SqlWriter::comma() {
  sql_ += ',';
  glued_ = false;
}

void SqlWriter::dot() {
  sql_ += '.';
  glued_ = true;
}

void SqlWriter::semicolon() {
  sql_ += ';';
  glued_ = false;
}

void SqlWriter::newLine() {
  sql_ += '\n';
  glued_ = true;
}

}  // namespace goodsbook::engine
