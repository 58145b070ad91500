#pragma once

#include <cstdint>
#include <vector>

#include "host/data/row_table.h"

namespace goodsbook {

// Which rows there are and in which order. Rows as loaded, none missing, take no memory; anything else is a
// list that can grow and shrink at both ends without moving all of it.
class RowOrder {
 public:
  RowOrder() = default;
  explicit RowOrder(std::vector<RowRef> rows) : rows_(std::move(rows)), listed_(true) {}
  static RowOrder asLoaded(std::uint32_t count) {
    RowOrder order;
    order.count_ = count;
    return order;
  }

  int size() const { return listed_ ? static_cast<int>(rows_.size() - head_) : static_cast<int>(count_); }
  RowRef at(int position) const {
    return listed_ ? rows_[head_ + static_cast<std::size_t>(position)] : static_cast<RowRef>(position);
  }
  int find(RowRef row) const;  // -1 when it is not there
  std::vector<RowRef> list() const;

  void appendLoaded(std::uint32_t first, std::uint32_t end);  // rows [first, end) behind the last
  void insert(int position, RowRef row);
  void erase(int position);
  std::size_t memoryBytes() const { return rows_.capacity() * sizeof(RowRef); }

 private:
  void makeList();

  std::vector<RowRef> rows_;
  std::size_t head_ = 0;  // rows were taken away before this one
  std::uint32_t count_ = 0;
  bool listed_ = false;
};

}  // namespace goodsbook
