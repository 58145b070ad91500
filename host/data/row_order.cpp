#include "host/data/row_order.h"

#include <algorithm>
#include <numeric>

namespace goodsbook {

int RowOrder::find(RowRef row) const {
  if (!listed_) return row < count_ ? static_cast<int>(row) : -1;
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(head_);
  const auto found = std::find(begin, rows_.end(), row);
  return found == rows_.end() ? -1 : static_cast<int>(found - begin);
}

std::vector<RowRef> RowOrder::list() const {
  if (listed_) return {rows_.begin() + static_cast<std::ptrdiff_t>(head_), rows_.end()};
  std::vector<RowRef> rows(count_);
  std::iota(rows.begin(), rows.end(), 0U);
  return rows;
}

void RowOrder::makeList() {
  if (listed_) return;
  rows_ = list();
  listed_ = true;
}

void RowOrder::appendLoaded(std::uint32_t first, std::uint32_t end) {
  if (!listed_ && first == count_) {
    count_ = end;
    return;
  }
  makeList();
  for (std::uint32_t row = first; row < end; ++row) rows_.push_back(row);
}

void RowOrder::insert(int position, RowRef row) {
  makeList();
  if (position == 0 && head_ > 0) {
    rows_[--head_] = row;
  } else {
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(head_) + position, row);
  }
}

void RowOrder::erase(int position) {
  makeList();
  const auto begin = rows_.begin() + static_cast<std::ptrdiff_t>(head_);
  if (position < size() / 2) {
    std::move_backward(begin, begin + position, begin + position + 1);
    ++head_;
  } else {
    rows_.erase(begin + position);
  }
}

}  // namespace goodsbook
