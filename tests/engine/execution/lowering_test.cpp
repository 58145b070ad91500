#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "engine/debug.h"
#include "tests/engine/support/session.h"

// Selects that are run in another way than they are written give the same rows as their plain forms.
namespace goodsbook::engine::test {
namespace {

class LoweringTest : public testing::Test {
 protected:
  // The same rows in tables with indexes (P, U, X) and without (P0, U0, X0).
  void SetUp() override {
    for (const std::string end : {"", "0"}) {
      define("create table P" + end + " (id varchar(5), name varchar(20), g int)");
      define("create table U" + end + " (id varchar(5), code varchar(20), t int)");
      define("create table X" + end + " (code varchar(20), n int)");
    }
    define(
        "create index I on P(id);create index I on U(code);create index J on U(id);create index I on X(code)");
    std::mt19937 random(3);
    const auto pick = [&](std::vector<std::string> values) { return values[random() % values.size()]; };
    for (int i = 0; i < 60; ++i) {
      const std::string id = "'" + std::to_string(i % 50) + "'";
      insert("P", id + "," + pick({"'Apfel'", "'birne'", "'APFEL '", "null", "'中文a'"}) + "," +
                      pick({"1", "2", "null"}));
    }
    for (int i = 0; i < 150; ++i)
      insert("U", "'" + std::to_string(random() % 55) + "'," +
                      pick({"'a1'", "'A1'", "'a1 '", "'b'", "null", "'c'", "'中'"}) + "," + pick({"0", "1"}));
    for (int i = 0; i < 40; ++i)
      insert("X", pick({"'a1'", "'B'", "'d'", "null"}) + "," + pick({"1", "2", "null"}));
  }

  void define(const std::string& batch) {
    const Outcome outcome = session.run(batch, Permission::Owner);
    ASSERT_FALSE(outcome.error) << outcome.error->text << "\n" << batch;
  }
  void insert(const std::string& table, const std::string& values) {
    define("insert into " + table + " values(" + values + ");insert into " + table + "0 values(" + values +
           ")");
  }
  Rows sorted(const std::string& select) {
    Rows rows = session.rows(select);
    std::sort(rows.begin(), rows.end());
    return rows;
  }
  // The query with each T# replaced by the table with and without indexes.
  void expectSame(const std::string& query) {
    std::string with = query;
    std::string without = query;
    with.erase(std::remove(with.begin(), with.end(), '#'), with.end());
    std::replace(without.begin(), without.end(), '#', '0');
    const std::string lowered = emittedSql(session.connection(), with);
    EXPECT_EQ(lowered.find("GROUP BY"), std::string::npos) << lowered;
    EXPECT_NE(emittedSql(session.connection(), without).find("GROUP BY"), std::string::npos);
    EXPECT_EQ(sorted(with), sorted(without)) << query;
    EXPECT_FALSE(sorted(with).empty()) << query;
  }

  Session session;
};

TEST_F(LoweringTest, GroupsAreLookedUpOneByOne) {
  expectSame(
      "select u.id,u.code,g.n from U# u inner join (select code,count(code) as n from U# group by code) g on u.code=g.code");
  expectSame(
      "select u.id,g.n,g.m from U# u, (select count(*) as n,code,max(id) as m from U# where t=1 group by code) g "
      "where g.code=u.code and u.t=0");
  expectSame(
      "select p.id,g.n from P# p inner join U# u on p.id=u.id inner join (select code,count(code) as n from (select code "
      "from U# union all select code from X#) a group by code) g on u.code=g.code and u.t=1");
  expectSame(
      "select u.id from U# u inner join (select code from X# group by code) g on g.code=u.code where u.t=1");
  expectSame(
      "select sum(g.s)+1 as s,count(*) as c from U# u inner join (select code,sum(n) as s from X# group by code) g on "
      "g.code=u.code where u.id<>'7'");
  expectSame(
      "select top 3 g.n,u.code from U# u inner join (select code,count(*) as n from X# group by code) g on g.code=u.code "
      "where g.n>2 order by g.n,u.code,u.id");
}

TEST_F(LoweringTest, AJoinWithoutAnIndexFindsTextsThatAreEqualOnly) {
  EXPECT_EQ(sorted("select u.id,x.n from U0 u inner join X0 x on u.code=x.code"),
            sorted("select u.id,x.n from U u inner join X x on u.code=x.code"));
  EXPECT_EQ(sorted("select u.id,x.n from U0 u left join (select distinct code,n from X0) x on u.code=x.code"),
            sorted("select u.id,x.n from U u left join (select distinct code,n from X) x on u.code=x.code"));
  EXPECT_EQ(sorted("select id from U0 where code in (select code from X0)"),
            sorted("select id from U where code in (select code from X)"));
}

TEST_F(LoweringTest, GroupsThatAreSpokenOfOtherwiseStayGrouped) {
  for (
      const char* query :
      {"select g.code,g.n from U u inner join (select code,count(code) as n from U group by code) g on u.code=g.code",
       "select u.id,g.n from U u left join (select code,count(code) as n from X group by code) g on u.code=g.code",
       "select u.id,g.n from U u inner join (select code,count(code) as n from X group by code having count(*)>1) g on u.code=g.code",
       "select u.id,g.n from U u inner join (select code,t,count(code) as n from U group by code,t) g on u.code=g.code",
       "select g.n from (select code,count(code) as n from U group by code) g"}) {
    EXPECT_NE(emittedSql(session.connection(), query).find("GROUP BY"), std::string::npos) << query;
    session.rows(query);
  }
}

TEST_F(LoweringTest, AFilterOverTablesFindsWhatItsDenialLeavesOut) {
  for (const std::string word : {"a", "1", "中", "zz", "", "%", "A1", "[", "_"}) {
    const std::string like = " like '%" + word + "%'";
    const std::string from =
        "select p.id,p.name,u.code from P p inner join U u on p.id=u.id and u.t=1 where ";
    const std::string filtered =
        from + "((u.code" + like + ") or (p.name" + like + ") or (p.id" + like + "))";
    const std::string plain = from + "case when u.code" + like + " then 1 when p.name" + like +
                              " then 1 when p.id" + like + " then 1 else 0 end=1";
    EXPECT_NE(emittedSql(session.connection(), filtered).find("ts_like_any"), std::string::npos);
    EXPECT_EQ(emittedSql(session.connection(), plain).find("ts_like_any"), std::string::npos);
    EXPECT_EQ(sorted(filtered), sorted(plain)) << word;
  }
}

}  // namespace
}  // namespace goodsbook::engine::test
