#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/engine/support/mutator.h"
#include "tests/engine/support/session.h"

namespace goodsbook::engine::test {
namespace {

std::string told(const Outcome& outcome) {
  std::string text;
  for (const ResultSet& set : outcome.sets) {
    for (const Column& column : set.columns) {
      text += column.name + ":" + std::to_string(static_cast<int>(column.type)) + ":" +
              std::to_string(column.width) + " ";
    }
    for (const auto& row : set.rows) {
      text += "\n";
      for (const Value& value : row) text += value.value_or("NULL") + "|";
    }
  }
  for (long long count : outcome.counts) text += "\n#" + std::to_string(count);
  if (outcome.error) text += "\n" + std::to_string(outcome.error->number) + " " + outcome.error->text;
  return text;
}

std::string undone(Connection& connection, const std::string& batch) {
  connection.begin();
  const std::string text = told(runOn(connection, batch));
  if (connection.inTransaction()) connection.rollback();
  return text;
}

// What runs on a connection that has seen much must give what it gives on one that has seen nothing.
TEST(SharedPlansTest, WhatRanBeforeChangesNoAnswer) {
  Session session;
  session.setUp(std::array<std::string_view, 5>{
      "insert into D1003 values('01','瓶','P',''),('02','箱','X',null),('7','x','1','2')",
      "insert into D1801(WL_ID,WL_NAME,DJ,BDATE,WL_YS,T) values('A001','可乐',1.5,'2026-01-05',1,1),"
      "('A002',null,null,null,0,2),('7','7',7,'2026-07-07',1,7)",
      "insert into D1801DWTM values(1,'1'),(2,'20'),(7,'007'),(null,null)",
      "insert into D1801DW(T,WL_ID,DW_ID,TM,SJ) values(1,'A001','01','690001',3.5),(0,'A002','02','690002',7)",
      "insert into D1004 values('01','饮料','','Z','YL'),('0101','碳酸','','01','TS')"});
  Mutator mutator(recordedBatches());
  for (int i = 0; i < 800; ++i) {
    const std::string batch = mutator.nextWithOtherValues();
    const std::string warm = undone(session.connection(), batch);
    const std::string cold = undone(*session.connect(), batch);
    ASSERT_EQ(warm, cold) << batch;
  }
}

// Statements of one shape share a plan; none may see what belonged to another.
TEST(SharedPlansTest, OtherValuesGiveOtherAnswers) {
  Session session;
  session.setUp(std::array<std::string_view, 1>{"insert into D1801DWTM values(1,'1'),(2,'20'),(3,'300')"});
  EXPECT_EQ(session.rows("select TM from D1801DWTM where ADW='1'"), (Rows{{"1"}}));
  EXPECT_EQ(session.run("select TM from D1801DWTM where ADW='x'").error.value().number, 245);
  EXPECT_EQ(session.rows("select TM from D1801DWTM where ADW=' 3 '"), (Rows{{"300"}}));
  EXPECT_EQ(session.rows("select top 1 TM from D1801DWTM order by 1"), (Rows{{"1"}}));
  EXPECT_EQ(session.rows("select top 2 TM from D1801DWTM order by 1"), (Rows{{"1"}, {"20"}}));
  EXPECT_EQ(session.rows("select convert(varchar(9),1.50)"), (Rows{{"1.50"}}));
  EXPECT_EQ(session.rows("select convert(varchar(9),2.125)"), (Rows{{"2.125"}}));
  EXPECT_EQ(session.rows("select isnull(null,1.5),case when 1=1 then 1.5 else 2 end"),
            (Rows{{"1.5", "1.5"}}));
  EXPECT_EQ(session.rows("select isnull(null,1.25),case when 1=1 then 1.25 else 2 end"),
            (Rows{{"1.25", "1.25"}}));
  EXPECT_EQ(session.rows("select 2147483647"), (Rows{{"2147483647"}}));
  EXPECT_EQ(session.rows("select 2147483648"), (Rows{{"2147483648"}}));
  EXPECT_EQ(session.run("select 'a' as X").sets.at(0).columns.at(0).name, "X");
  EXPECT_EQ(session.run("select 'b' as x").sets.at(0).columns.at(0).name, "x");
}

}  // namespace
}  // namespace goodsbook::engine::test
