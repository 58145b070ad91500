#include "host/forms/list_statement.h"

#include <gtest/gtest.h>

namespace goodsbook {
namespace {

struct Case {
  const char* name;
  const char* statement;
  const char* condition;
  const char* expected;
};

class ListStatement : public testing::TestWithParam<Case> {};

TEST_P(ListStatement, TakesTheCondition) {
  const Case& row = GetParam();
  EXPECT_EQ(withCondition(QString::fromUtf8(row.statement), QString::fromUtf8(row.condition)).toStdString(),
            row.expected)
      << row.name;
}

INSTANTIATE_TEST_SUITE_P(
    Forms, ListStatement,
    testing::Values(
        Case{"a blank condition changes nothing", "select * From D1003", "  ", "select * From D1003"},
        Case{"the condition stands behind a plain select", "select * From D1003", "dw_id='1'",
             "select * From D1003 Where dw_id='1'"},
        Case{
            "a join that ends with AND has no WHERE yet",
            "select a from b inner join c on b.x=c.x  AND (c.T = 1)  ",
            " ((c.TM LIKE '%1%') or (b.x LIKE '%1%'))",
            "select a from b inner join c on b.x=c.x  AND (c.T = 1)   Where  ((c.TM LIKE '%1%') or (b.x LIKE '%1%'))"},
        Case{"a bare or stays bare where nothing else is asked", "select a from b", "x=1 or y=2",
             "select a from b Where x=1 or y=2"},
        Case{"a bare or is put in parentheses behind a WHERE", "select a from b where c=3", "x=1 or y=2",
             "select a from b where c=3 and (x=1 or y=2)"},
        Case{"a bare or of the statement is put in parentheses too", "select a from b where c=3 or d=4",
             "x=1", "select a from b where ( c=3 or d=4) and x=1"},
        Case{"an or inside a quoted text is none", "select a from b where c=3", "x='this or that'",
             "select a from b where c=3 and x='this or that'"},
        Case{"a WHERE inside a derived table is not the statement's",
             "select a from (select a from b where c=3) t", "x=1",
             "select a from (select a from b where c=3) t Where x=1"},
        Case{"the order stays behind", "SELECT  * from  D1002 ORDER BY  OID,ADDR_ID ", "oid='Z'",
             "SELECT  * from  D1002  Where oid='Z' ORDER BY  OID,ADDR_ID "},
        Case{"groups stay behind", "select a,count(*) from b where c=3 GROUP BY a ORDER BY a", "x=1",
             "select a,count(*) from b where c=3  and x=1 GROUP BY a ORDER BY a"},
        Case{"a column named like a word in brackets is no word", "select [where], [order] from b", "x=1",
             "select [where], [order] from b Where x=1"}));

}  // namespace
}  // namespace goodsbook
