#include <gtest/gtest.h>

#include <stdexcept>

#include "app/driver/test_server.h"
#include "host/data/errors.h"
#include "host/data/value_text.h"
#include "tests/engine/support/case_comparison.h"

// The recorded cases of the engine, sent to a real server by the same way that the program takes.
namespace goodsbook::test {
namespace {

using engine::test::Case;
using engine::test::CaseSet;
using engine::test::Outcome;

class Collector : public engine::ResultSink {
 public:
  explicit Collector(Outcome& outcome) : outcome_(outcome) {}
  void beginSet(std::span<const engine::Column> columns) override {
    outcome_.sets.emplace_back().columns.assign(columns.begin(), columns.end());
  }
  void row(const engine::Row& row) override {
    auto& set = outcome_.sets.back();
    auto& values = set.rows.emplace_back();
    for (std::size_t i = 0; i < set.columns.size(); ++i) {
      values.push_back(engine::test::valueText(row, static_cast<int>(i), set.columns[i].type));
    }
  }
  void affected(std::int64_t rows) override { outcome_.counts.push_back(rows); }
  void notice(const engine::Diagnostic& notice) override { outcome_.notices.push_back(notice); }

 private:
  Outcome& outcome_;
};

Outcome run(Database& database, const std::string& batch) {
  Outcome outcome;
  Collector collector(outcome);
  try {
    database.execute(QString::fromStdString(batch), collector, Database::Permission::Screens);
  } catch (const EDatabaseError& error) {
    outcome.error = engine::Diagnostic{.number = error.number,
                                       .severity = error.severity,
                                       .state = error.state,
                                       .line = error.line,
                                       .text = error.text.toStdString()};
  }
  return outcome;
}

// The first value of each {{query}} in its place.
std::string filled(Database& database, std::string batch) {
  for (std::size_t open = batch.find("{{"); open != std::string::npos; open = batch.find("{{")) {
    const std::size_t close = batch.find("}}");
    const Outcome found = run(database, batch.substr(open + 2, close - open - 2));
    if (found.sets.size() != 1 || found.sets[0].rows.empty()) throw std::runtime_error("no row for " + batch);
    batch.replace(open, close + 2 - open, found.sets[0].rows[0][0].value_or("NULL"));
  }
  return batch;
}

void check(Database& database, const Case& test) {
  for (const std::string& setup : test.setup) {
    const Outcome outcome = run(database, filled(database, setup));
    ASSERT_FALSE(outcome.error) << outcome.error->text;
  }
  const std::string batch = filled(database, test.batch);
  SCOPED_TRACE(batch);
  const Outcome outcome = run(database, batch);
  if (outcome.error) {
    ASSERT_TRUE(test.error) << outcome.error->number << ": " << outcome.error->text;
    // What the recording server numbered in its own way may be numbered so or as documented.
    if (outcome.error->number != test.error->number) engine::test::compareError(*outcome.error, test);
  } else {
    ASSERT_FALSE(test.error) << "no error " << test.error->documented.value_or(0);
    ASSERT_EQ(outcome.sets.size(), test.sets.size());
    for (std::size_t i = 0; i < test.sets.size(); ++i) {
      engine::test::compareSet(outcome.sets[i], test.sets[i], test);
    }
    if (engine::test::countsAreRecorded(test, batch)) {
      EXPECT_EQ(outcome.counts, test.counts);
    }
  }
  for (const CaseSet& state : test.after) {
    SCOPED_TRACE(state.query);
    const Outcome after = run(database, state.query);
    ASSERT_FALSE(after.error) << after.error->text;
    ASSERT_EQ(after.sets.size(), 1U);
    engine::test::compareSet(after.sets.front(), state, {});
  }
}

TEST(ServerCases, AnswerAsTheyWereRecorded) {
  if (!TestServer::isGiven()) GTEST_SKIP() << "T-SQL only: GOODSBOOK_TEST_SERVER names no server";
  TestServer& server = TestServer::shared();
  server.makeTables(engine::test::preludeScript());
  const auto database =
      server.open([] { return toDateTime(static_cast<qint64>(engine::test::Session::now())); });
  for (const Case& test : engine::test::recordedCases()) {
    SCOPED_TRACE(test.name);
    server.emptyTables();
    check(*database, test);
  }
}

}  // namespace
}  // namespace goodsbook::test
