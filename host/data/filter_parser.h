#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "host/data/filter_node.h"

namespace goodsbook {

// Reads the language of RowFilter, a rule a function.
class FilterParser {
 public:
  FilterParser(const QString& text, const std::vector<Field>& fields);

  std::unique_ptr<FilterNode> parse();  // none when the text cannot be read

 private:
  using Node = std::unique_ptr<FilterNode>;

  bool split(const QString& text);
  bool take(const QString& word);  // keywords and signs, without regard to case
  Node anyOf();                    // allOf {or allOf}
  Node allOf();                    // single {and single}
  Node single();                   // not single | ( anyOf ) | condition
  Node condition();                // operand (sign operand | is [not] null | [not] like text)
  bool operand(FilterOperand& result);
  bool makeComparable(FilterOperand& value, FieldType type) const;

  const std::vector<Field>& fields_;
  QStringList words_;  // texts begin with a quote, names in brackets with a bracket
  qsizetype at_ = 0;
  int depth_ = 0;
  bool readable_ = false;
};

}  // namespace goodsbook
