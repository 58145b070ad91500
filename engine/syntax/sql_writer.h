#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// Puts T-SQL together word by word; owns blanks, quotes and parentheses.
class SqlWriter {
 public:
  void word(std::string_view text);  // a keyword, operator, variable or number
  void name(std::string_view name);  // in brackets where it needs them
  void object(const ObjectName& name);
  void text(std::string_view value);  // in quotes
  void nationalText(std::string_view value);
  void call(std::string_view function);  // a function's name; open() follows
  void open();
  void close();
  void comma();
  void dot();
  void semicolon();
  void newLine();

  std::string take() { return std::move(sql_); }

 private:
  void blank();
  void quoted(std::string_view value, char close);

  std::string sql_;
  bool glued_ = true;  // no blank before the next word
};

}  // namespace goodsbook::engine
