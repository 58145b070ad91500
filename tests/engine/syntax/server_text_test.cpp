#include "engine/server_text.h"

#include <gtest/gtest.h>

namespace goodsbook::engine {
namespace {

struct TextRow {
  const char* name;
  const char* batch;
  const char* sent;
};

void PrintTo(const TextRow& row, std::ostream* out) {
  *out << row.name;
}

class ServerTextTest : public testing::TestWithParam<TextRow> {};

TEST_P(ServerTextTest, IsSentAs) {
  EXPECT_EQ(forServer(GetParam().batch), GetParam().sent);
}

INSTANTIATE_TEST_SUITE_P(
    Batches, ServerTextTest,
    testing::Values(
        TextRow{"a Chinese text becomes national", "insert into t values('苹果')",
                "insert into t values( N'苹果')"},
        TextRow{"a text of ASCII stays", "select 'it''s' as a", "select 'it''s' as a"},
        TextRow{"a national text stays", "select N'苹果', n'梨'", "select N'苹果', n'梨'"},
        TextRow{"doubled quotes are inside the text", "select '苹''果','b'", "select  N'苹''果','b'"},
        TextRow{"a word right before the quote does not swallow the N", "where a like'%瓶%'and b=1",
                "where a like N'%瓶%'and b=1"},
        TextRow{"comments and quoted names are no texts", "select [名'称] -- '苹果'\n, /* '梨' */ \"价'\"",
                "select [名'称] -- '苹果'\n, /* '梨' */ \"价'\""},
        TextRow{"a number ends where the next statement begins", "where adw=5insert into t values(5,'箱')",
                "where adw=5insert into t values(5, N'箱')"},
        TextRow{"what cannot be read to its end keeps its rest", "select '苹果', 'open 梨",
                "select  N'苹果', 'open 梨"}));

TEST(ServerText, TheClockCanBeGiven) {
  EXPECT_EQ(forServer("values (GETDATE(),getdate ( ),'getdate()', getdates())", "X"),
            "values (X,X,'getdate()', getdates())");
}

TEST(ServerText, OwnersWordsAreFoundOutsideOfTextsAndNames) {
  EXPECT_EQ(ownersWord("select 1; DROP table t"), "DROP");
  EXPECT_EQ(ownersWord("insert into t values(5)commit"), "commit");
  EXPECT_EQ(ownersWord("select 'drop table t' as [create], dropped from t -- alter\n where grants=1"), "");
  EXPECT_EQ(ownersWord("begin update t set a=1 end exec SYS_DW @adw=1"), "");
}

TEST(ServerText, SomeBatchesStandOutsideOfTransactions) {
  EXPECT_TRUE(standsOutsideTransactions(" create DATABASE shop"));
  EXPECT_TRUE(standsOutsideTransactions("-- now\nbackup database shop to disk='x'"));
  EXPECT_FALSE(standsOutsideTransactions("create table t (a int)"));
  EXPECT_FALSE(standsOutsideTransactions(""));
}

}  // namespace
}  // namespace goodsbook::engine
