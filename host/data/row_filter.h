#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "host/data/row_table.h"

namespace goodsbook {

struct FilterNode;

// A condition on rows: comparisons = <> < > <= >= of fields, numbers and 'texts', `like` with % and _, `is
// null` and `is not null`, joined by and, or, not and parentheses. Field names ignore case and may stand in
// brackets. Text compares without regard to case; a comparison with null holds for no row.
class RowFilter {
 public:
  // Nothing when the text cannot be read, names an unknown field or compares what cannot be compared.
  static std::optional<RowFilter> parse(const QString& text, const std::vector<Field>& fields);

  bool accepts(const RowTable& table, RowRef row) const;

 private:
  explicit RowFilter(std::shared_ptr<const FilterNode> root) : root_(std::move(root)) {}

  std::shared_ptr<const FilterNode> root_;
};

}  // namespace goodsbook
