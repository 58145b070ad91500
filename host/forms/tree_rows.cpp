#include "host/forms/tree_rows.h"

#include <QHash>

namespace goodsbook {
namespace {

QString folded(const QString& code) {
  return code.trimmed().toUpper();
}

class Builder {
 public:
  Builder(std::span<const TreeRow> rows, const QString& rootValue)
      : rows_(rows), placed_(rows.size(), false) {
    const QString root = folded(rootValue);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (!byCode_.contains(folded(rows[i].code))) byCode_.insert(folded(rows[i].code), i);
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const QString parent = folded(rows[i].parent);
      if (parent.isEmpty() || parent == root) {
        tops_.push_back(i);
      } else if (const auto found = byCode_.constFind(parent); found != byCode_.constEnd()) {
        children_[*found].push_back(i);
      } else {
        orphans_.push_back(i);
      }
    }
  }

  std::vector<TreePlace> build() {
    for (const std::size_t row : tops_) place(row, -1);
    for (const std::size_t row : orphans_) place(row, TreePlace::orphanParent);
    for (std::size_t row = 0; row < rows_.size(); ++row) place(row, TreePlace::orphanParent);  // rings
    return std::move(places_);
  }

 private:
  // The row and all below it, without recursion: a chain of parents can be as long as the table.
  void place(std::size_t top, int parent) {
    std::vector<std::pair<std::size_t, int>> open{{top, parent}};
    while (!open.empty()) {
      const auto [row, above] = open.back();
      open.pop_back();
      if (placed_[row]) continue;
      placed_[row] = true;
      const int here = static_cast<int>(places_.size());
      places_.push_back({static_cast<int>(row), above});
      const std::vector<std::size_t> children = children_.value(row);
      for (auto child = children.rbegin(); child != children.rend(); ++child) open.emplace_back(*child, here);
    }
  }

  std::span<const TreeRow> rows_;
  std::vector<bool> placed_;
  QHash<QString, std::size_t> byCode_;
  QHash<std::size_t, std::vector<std::size_t>> children_;
  std::vector<std::size_t> tops_, orphans_;
  std::vector<TreePlace> places_;
};

}  // namespace

std::vector<TreePlace> treeOf(std::span<const TreeRow> rows, const QString& rootValue) {
  return Builder(rows, rootValue).build();
}

}  // namespace goodsbook
