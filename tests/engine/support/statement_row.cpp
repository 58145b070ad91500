#include "tests/engine/support/statement_row.h"

#include <gtest/gtest.h>

namespace goodsbook::engine::test {
namespace {

std::string line(const std::vector<Value>& row) {
  std::string text;
  for (const Value& value : row) {
    if (&value != &row.front()) text += '|';
    text += value.value_or("NULL");
  }
  return text;
}

}  // namespace

void PrintTo(const StatementRow& row, std::ostream* out) {
  *out << row.name;
}

void expectAnswer(Session& session, const StatementRow& row) {
  const std::string batch = session.filled(row.batch);
  SCOPED_TRACE(batch);
  const Outcome outcome = session.run(batch);
  EXPECT_EQ(outcome.error ? outcome.error->number : 0, row.error)
      << (outcome.error ? outcome.error->text : "");
  if (row.query.empty()) return;
  const std::string query = session.filled(row.query);
  SCOPED_TRACE(query);
  const Outcome answer = session.run(query);
  ASSERT_FALSE(answer.error.has_value()) << answer.error->number << ": " << answer.error->text;
  ASSERT_EQ(answer.sets.size(), 1U);
  std::vector<std::string> lines;
  for (const auto& values : answer.sets.front().rows) lines.push_back(line(values));
  std::vector<std::string> expected;
  for (const std::string& text : row.rows) expected.push_back(session.filled(text));
  EXPECT_EQ(lines, expected);
}

}  // namespace goodsbook::engine::test
