#include "tests/engine/support/cases.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/engine/support/case_comparison.h"
#include "tests/engine/support/session.h"

// What a real server answered, statement by statement.
namespace goodsbook::engine::test {

void PrintTo(const Case& recorded, std::ostream* out) {
  *out << recorded.name;
}

namespace {

class CasesTest : public testing::TestWithParam<Case> {};

TEST_P(CasesTest, AnswersAsAServerDoes) {
  const Case& test = GetParam();
  Session session;
  for (const std::string& setup : test.setup) {
    const std::string batch = session.filled(setup);
    session.setUp(std::array{std::string_view(batch)});
  }
  const std::string batch = session.filled(test.batch);
  SCOPED_TRACE(batch);
  const Outcome outcome = session.run(batch);
  if (outcome.error) {
    compareError(*outcome.error, test);
    if (!test.error) return;
  } else {
    ASSERT_FALSE(test.error.has_value()) << "no error " << test.error->documented.value_or(0);
    ASSERT_EQ(outcome.sets.size(), test.sets.size());
    for (std::size_t i = 0; i < test.sets.size(); ++i) compareSet(outcome.sets[i], test.sets[i], test);
    if (countsAreRecorded(test, batch)) {
      EXPECT_EQ(outcome.counts, test.counts);
    }
  }
  for (const CaseSet& state : test.after) {
    SCOPED_TRACE(state.query);
    const Outcome after = session.run(state.query);
    ASSERT_FALSE(after.error.has_value()) << after.error->text;
    ASSERT_EQ(after.sets.size(), 1U);
    Case unordered;
    compareSet(after.sets.front(), state, unordered);
  }
}

INSTANTIATE_TEST_SUITE_P(Recorded, CasesTest, testing::ValuesIn(recordedCases()));

}  // namespace
}  // namespace goodsbook::engine::test
