#include <gtest/gtest.h>

#include <string_view>

#include "tests/engine/support/session.h"

// What the owner of a database defines is used under its name: procedures with their arguments, hostile
// names.
namespace goodsbook::engine::test {
namespace {

class OwnerTest : public testing::Test {
 protected:
  int run(std::string_view batch) {
    const Outcome outcome = session_.run(batch, Permission::Owner);
    return outcome.error ? outcome.error->number : 0;
  }
  Rows rows(std::string_view select) { return session_.rows(select); }

  Session session_;
};

TEST_F(OwnerTest, ProceduresTakeArguments) {
  ASSERT_EQ(
      run("create procedure p @a int, @b varchar(3) = 'd' as if @a=1 select @b as b, @a+1 as a else begin insert into "
          "D1003(dw_id,dw_name) values(@b,@a) select count(*) as n from D1003 end"),
      0);
  EXPECT_EQ(rows("exec p 1"), (Rows{{"d", "2"}}));
  EXPECT_EQ(rows("exec p @b='x',@a='1'"), (Rows{{"x", "2"}}));
  EXPECT_EQ(run("exec p 1,word"), 2628) << "an argument is not cut to the width of its parameter";
  EXPECT_EQ(rows("exec p 7,z"), (Rows{{"1"}}));
  EXPECT_EQ(rows("exec p -8,default"), (Rows{{"2"}}));
  EXPECT_EQ(rows("select dw_id,dw_name from D1003 order by dw_id"), (Rows{{"d", "-8"}, {"z", "7"}}));
  EXPECT_EQ(run("exec p null"), 2627);
  EXPECT_EQ(run("exec p"), 201);
  EXPECT_EQ(run("exec p 'x'"), 245);
  ASSERT_EQ(run("drop procedure p"), 0);
  EXPECT_EQ(run("exec p 1"), 2812);
}

TEST_F(OwnerTest, NamesMayHoldAnything) {
  ASSERT_EQ(run("create table [a]]b c] ([x y] int, [z'q] varchar(10), \"d\"\"e\" bit, [select] int)"), 0);
  ASSERT_EQ(run("insert into [A]]B C] values(1,'it''s',1,5)"), 0);
  EXPECT_EQ(rows("select [X Y],[z'q],\"d\"\"e\",[select] from [a]]b c] where [Z'Q]='IT''S'"),
            (Rows{{"1", "it's", "1", "5"}}));
  ASSERT_EQ(
      run("create table 商品 (编号 int primary key, 名称 nvarchar(10));insert into 商品 values(1,N'苹果')"),
      0);
  EXPECT_EQ(rows("select 商品.编号, 名称 from 商品 order by 名称"), (Rows{{"1", "苹果"}}));
}

TEST_F(OwnerTest, ATableIsMadeAnewWithOtherColumns) {
  ASSERT_EQ(run("create table t (a int)"), 0);
  EXPECT_EQ(rows("select * from t"), Rows{});
  ASSERT_EQ(run("drop table t"), 0);
  EXPECT_EQ(run("select * from t"), 208);
  ASSERT_EQ(run("create table t (b varchar(5));insert into t values('x')"), 0);
  EXPECT_EQ(rows("select * from t"), (Rows{{"x"}}));
}

}  // namespace
}  // namespace goodsbook::engine::test
