#include "tests/engine/support/case_comparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <string>

#include "engine/syntax/names.h"
#include "engine/syntax/parser.h"

namespace goodsbook::engine::test {
namespace {

bool isNumber(const std::string& type) {
  return type == "int" || type == "bit" || type == "float" || type == "decimal";
}

// One spelling for each number.
std::string canonical(const Value& value, const std::string& type) {
  if (!value) return "NULL";
  if (!isNumber(type)) return "'" + *value + "'";
  double number = 0;
  const auto read = std::from_chars(value->data(), value->data() + value->size(), number);
  if (read.ec != std::errc{} || read.ptr != value->data() + value->size()) return "no number: " + *value;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.12g", number == 0 ? 0.0 : number);
  return text.data();
}

std::vector<std::string> lines(const Rows& rows, const std::vector<std::string>& types,
                               const std::vector<std::size_t>& columns) {
  std::vector<std::string> result;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) line += canonical(row.at(columns[i]), types[i]) + " | ";
    result.push_back(std::move(line));
  }
  return result;
}

bool agrees(Type type, const std::string& recorded) {
  switch (type) {
    case Type::Bit:
      return recorded == "bit";
    case Type::Integer:
      return recorded == "int" || recorded == "decimal";  // ROUND of a whole number
    case Type::Float:
      return recorded == "float" || recorded == "decimal";
    case Type::DateTime:
      return recorded == "datetime";
    case Type::Text:
      return recorded == "text";
    case Type::Blob:
      return recorded == "binary";
  }
  return false;
}

// Where the recorded columns are in a set, by name in a subset, else by place.
std::vector<std::size_t> columnsOf(const ResultSet& set, const CaseSet& recorded, bool subset) {
  std::vector<std::size_t> columns;
  for (std::size_t i = 0; i < recorded.types.size(); ++i) {
    std::size_t place = i;
    if (subset && i < recorded.columns.size() && recorded.columns[i]) {
      const auto found = std::find_if(set.columns.begin(), set.columns.end(), [&](const Column& column) {
        return sameName(column.name, *recorded.columns[i]);
      });
      place = static_cast<std::size_t>(found - set.columns.begin());
    }
    columns.push_back(place);
  }
  return columns;
}

}  // namespace

void compareSet(const ResultSet& set, const CaseSet& recorded, const Case& test) {
  if (!test.subset) {
    ASSERT_EQ(set.columns.size(), recorded.types.size());
  }
  const std::vector<std::size_t> columns = columnsOf(set, recorded, test.subset);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    ASSERT_LT(columns[i], set.columns.size()) << "column " << i;
    const Column& column = set.columns[columns[i]];
    EXPECT_TRUE(agrees(column.type, recorded.types[i]))
        << "column " << i << " is of type " << static_cast<int>(column.type) << ", not " << recorded.types[i];
    if (i >= recorded.columns.size() || !recorded.columns[i]) continue;
    EXPECT_TRUE(sameName(column.name, *recorded.columns[i])) << column.name << " / " << *recorded.columns[i];
  }
  std::vector<std::string> ours = lines(set.rows, recorded.types, columns);
  std::vector<std::size_t> places(recorded.types.size());
  for (std::size_t i = 0; i < places.size(); ++i) places[i] = i;
  std::vector<std::string> theirs = lines(recorded.rows, recorded.types, places);
  if (!test.ordered) {
    std::sort(ours.begin(), ours.end());
    std::sort(theirs.begin(), theirs.end());
  }
  EXPECT_EQ(ours, theirs);
}

void compareError(const Diagnostic& error, const Case& test) {
  ASSERT_TRUE(test.error.has_value() || (test.beyond && error.number == notSupportedError))
      << error.number << ": " << error.text;
  if (!test.error) return;
  const int number = error.number == 8152 ? 2628 : error.number;
  const int recorded = test.error->documented.value_or(test.error->number.value_or(0));
  EXPECT_EQ(number, recorded == 8152 ? 2628 : recorded) << error.text;
  EXPECT_GE(error.severity, 11) << error.text;
  EXPECT_FALSE(error.text.empty());
}

bool countsAreRecorded(const Case& test, const std::string& batch) {
  if (!test.counts.empty()) return true;
  const Script script = parse(batch);
  return std::none_of(script.statements.begin(), script.statements.end(), [](const Statement& statement) {
    return std::holds_alternative<If>(statement.node) || std::holds_alternative<Execute>(statement.node);
  });
}

}  // namespace goodsbook::engine::test
