#include "host/data/sort_rows.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <string>

#include "host/data/text_fold.h"

namespace goodsbook {
namespace {

// Keys that compare as unsigned numbers, with the row's place as the tie breaker: what is compared lies side
// by side.
struct Keyed {
  std::uint64_t key;
  std::uint32_t place;
  bool operator<(const Keyed& other) const {
    return key != other.key ? key < other.key : place < other.place;
  }
};

constexpr std::uint64_t signBit = std::uint64_t{1} << 63;

std::uint64_t keyOfInteger(std::int64_t value) {
  return static_cast<std::uint64_t>(value) ^ signBit;
}

std::uint64_t keyOfFloat(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value);
  return (bits & signBit) != 0 ? ~bits : bits | signBit;
}

// Texts are compared eight bytes at a time: rows that agree in the first eight are sorted by the next, and so
// on.
class TextSort {
 public:
  TextSort(bool descending, std::size_t count) : descending_(descending) { ends_.reserve(count); }

  void add(std::string_view text, bool fold) {
    if (fold) {
      foldText(text, keys_);
    } else {
      keys_.append(text);
    }
    ends_.push_back(keys_.size());
  }

  std::vector<Keyed> sorted() {
    std::vector<Keyed> keyed(ends_.size());
    for (std::uint32_t i = 0; i < keyed.size(); ++i) keyed[i].place = i;
    // A list of what is still to do instead of a recursion: long texts may agree for thousands of steps.
    std::vector<Run> todo{{keyed, 0}};
    while (!todo.empty()) {
      const Run run = todo.back();
      todo.pop_back();
      sortStep(run, todo);
    }
    return keyed;
  }

 private:
  static constexpr std::size_t step = 8;

  struct Run {
    std::span<Keyed> rows;
    std::size_t depth;  // bytes in which all of them agree
  };

  std::string_view text(std::uint32_t place) const {
    const std::size_t begin = place == 0 ? 0 : ends_[place - 1];
    return std::string_view(keys_).substr(begin, ends_[place] - begin);
  }

  std::uint64_t keyAt(std::uint32_t place, std::size_t depth) const {
    const auto whole = text(place);
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < step; ++i) {
      key = key << 8U | (depth + i < whole.size() ? static_cast<unsigned char>(whole[depth + i]) : 0U);
    }
    return descending_ ? ~key : key;
  }

  void sortStep(const Run& run, std::vector<Run>& todo) const {
    const auto rows = run.rows;
    for (auto& row : rows) row.key = keyAt(row.place, run.depth);
    std::sort(rows.begin(), rows.end());
    for (std::size_t begin = 0; begin < rows.size();) {
      std::size_t end = begin;
      bool more = false;
      for (; end < rows.size() && rows[end].key == rows[begin].key; ++end) {
        more = more || text(rows[end].place).size() > run.depth + step;
      }
      if (more && end - begin > 1) todo.push_back({rows.subspan(begin, end - begin), run.depth + step});
      begin = end;
    }
  }

  bool descending_;
  std::string keys_;
  std::vector<std::size_t> ends_;
};

}  // namespace

void sortRows(const RowTable& table, int field, bool descending, std::vector<RowRef>& rows) {
  const FieldType type = table.fields()[static_cast<std::size_t>(field)].type;
  std::vector<RowRef> nulls;
  std::vector<RowRef> values;
  values.reserve(rows.size());
  for (const RowRef row : rows) (table.isNull(row, field) ? nulls : values).push_back(row);

  std::vector<Keyed> keyed;
  if (type == FieldType::Text || type == FieldType::Blob) {
    TextSort sort(descending, values.size());
    for (const RowRef row : values) sort.add(table.cell(row, field).bytes, type == FieldType::Text);
    keyed = sort.sorted();
  } else {
    keyed.resize(values.size());
    for (std::uint32_t i = 0; i < values.size(); ++i) {
      const Cell cell = table.cell(values[i], field);
      const std::uint64_t key = type == FieldType::Float ? keyOfFloat(cell.real) : keyOfInteger(cell.integer);
      keyed[i] = {descending ? ~key : key, i};
    }
    std::sort(keyed.begin(), keyed.end());
  }

  auto out = rows.begin();
  if (!descending) out = std::copy(nulls.begin(), nulls.end(), out);
  for (const auto& row : keyed) *out++ = values[row.place];
  if (descending) std::copy(nulls.begin(), nulls.end(), out);
}

}  // namespace goodsbook
