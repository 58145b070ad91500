#include <gtest/gtest.h>

#include <string>

#include "tests/engine/support/session.h"

// Long statements run; what is beyond a limit is an error that says so.
namespace goodsbook::engine::test {
namespace {

std::string repeated(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

std::string numbers(int count) {
  std::string list = "'0'";
  for (int i = 1; i < count; ++i) list += ",'" + std::to_string(i) + "'";
  return list;
}

TEST(LimitsTest, LongListsAndChainsRun) {
  Session session;
  EXPECT_EQ(session.rows("select 1 where 1=0" + repeated(" or 1=0", 2'000) + " or 1=1"), (Rows{{"1"}}));
  EXPECT_EQ(session.rows("select 1 where 1=1" + repeated(" and 1=1", 2'000)), (Rows{{"1"}}));
  EXPECT_EQ(session.rows("select 1 where '4999' in (" + numbers(5'000) + ")"), (Rows{{"1"}}));
  EXPECT_EQ(session.rows("select " + repeated("(", 100) + "1" + repeated(")", 100)), (Rows{{"1"}}));
}

TEST(LimitsTest, ManyRowsAreInsertedByOneStatement) {
  Session session;
  std::string insert = "insert into D1801DWTM values(0,'x')";
  for (int i = 1; i < 3'000; ++i) insert += ",(" + std::to_string(i) + ",'x')";
  EXPECT_EQ(session.run(insert).counts, (std::vector<long long>{3'000}));
  EXPECT_EQ(session.rows("select count(*),sum(ADW) from D1801DWTM"), (Rows{{"3000", "4498500"}}));
}

TEST(LimitsTest, ManyStatementsAreOneBatch) {
  Session session;
  std::string batch;
  for (int i = 0; i < 2'000; ++i) batch += "insert into D1801DWTM values(" + std::to_string(i) + ",'x')";
  EXPECT_EQ(session.run(batch).counts.size(), 2'000U);
  EXPECT_EQ(session.rows("select count(*) from D1801DWTM"), (Rows{{"2000"}}));
}

TEST(LimitsTest, LongTextsAreKept) {
  Session session;
  const std::string text(2'000'000, 'x');
  ASSERT_FALSE(
      session.run("create table t (a nvarchar(max), b varbinary(max))", Permission::Owner).error.has_value());
  ASSERT_FALSE(session.run("insert into t values('" + text + "中',0x" + repeated("AB", 100'000) + ")")
                   .error.has_value());
  const Rows rows = session.rows("select a,len(a),b from t");
  EXPECT_EQ(rows.at(0).at(0), text + "中");
  EXPECT_EQ(rows.at(0).at(1), "2000001");
  EXPECT_EQ(rows.at(0).at(2), "0x" + repeated("AB", 100'000));
}

struct DeepRow {
  const char* name;
  std::string batch;
};

void PrintTo(const DeepRow& row, std::ostream* out) {
  *out << row.name;
}

class DeepTest : public testing::TestWithParam<DeepRow> {};

TEST_P(DeepTest, RunsOrSaysThatItIsTooDeep) {
  Session session;
  const Outcome outcome = session.run(GetParam().batch);
  if (outcome.error) {
    EXPECT_EQ(outcome.error->number, 191) << outcome.error->text;
  }
  EXPECT_EQ(session.rows("select 1"), (Rows{{"1"}})) << "the connection is as good as before";
}

const DeepRow deep[] = {
    {"parentheses", "select " + repeated("(", 190) + "1" + repeated(")", 190)},
    {"a sum", "select 1" + repeated("+1", 190)},
    {"a sum of texts", "select 'a'" + repeated("+'a'", 190)},
    {"functions", "select " + repeated("abs(", 190) + "1" + repeated(")", 190)},
    {"cases", "select " + repeated("case when 1=1 then ", 190) + "1" + repeated(" end", 190)},
    {"subqueries", "select " + repeated("(select ", 60) + "1" + repeated(")", 60)},
    {"derived tables", "select * from " + repeated("(select * from ", 60) + "D1003" + repeated(") t", 60)},
    {"joins", "select 1 from D1003 t" + repeated(" cross join D1003 u", 1)},
    {"unions", "select 1" + repeated(" union all select 1", 700)},
    {"denials", "select 1 where " + repeated("not ", 190) + "1=1"},
    {"blocks", repeated("begin ", 190) + "select 1" + repeated(" end", 190)},
    {"conditions", repeated("if 1=1 ", 190) + "select 1"},
};

INSTANTIATE_TEST_SUITE_P(Nested, DeepTest, testing::ValuesIn(deep));

}  // namespace
}  // namespace goodsbook::engine::test
