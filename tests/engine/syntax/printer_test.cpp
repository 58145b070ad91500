#include "engine/syntax/printer.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/error.h"
#include "engine/syntax/batches.h"
#include "engine/syntax/parser.h"
#include "tests/engine/support/cases.h"
#include "tests/engine/support/tree_dump.h"

namespace goodsbook::engine {
namespace {

// Print, parse again, print: the same tree and the same text.
void expectSameTree(const std::string& batch) {
  SCOPED_TRACE(batch);
  const Script tree = parse(batch);
  const std::string printed = print(tree);
  const Script again = parse(printed);
  EXPECT_EQ(test::dump(again), test::dump(tree)) << printed;
  EXPECT_EQ(print(again), printed);
}

std::string withLineEnds(std::string batch, const std::string& lineEnd) {
  std::string result;
  bool quoted = false;
  for (char c : batch) {
    if (c == '\'' || c == '"' || c == '[' || c == ']') quoted = true;
    result += c == ' ' && !quoted ? lineEnd : std::string(1, c);
  }
  return result;
}

TEST(PrinterTest, EveryRecordedBatchKeepsItsTree) {
  int printed = 0;
  for (const test::Case& recorded : test::recordedCases()) {
    const std::string batch = test::withoutQueries(recorded.batch);
    try {
      parse(batch);
    } catch (const SqlError&) {
      EXPECT_TRUE(recorded.error.has_value()) << recorded.name;
      continue;
    }
    expectSameTree(batch);
    for (const std::string& setup : recorded.setup) expectSameTree(test::withoutQueries(setup));
    ++printed;
  }
  EXPECT_GT(printed, 230);
}

TEST(PrinterTest, EveryTableOfTheCasesKeepsItsTree) {
  for (const BatchText& batch : splitBatches(test::preludeScript())) expectSameTree(std::string(batch.text));
}

TEST(PrinterTest, LineEndsDoNotMatter) {
  for (const test::Case& recorded : test::recordedCases()) {
    const std::string batch = test::withoutQueries(recorded.batch);
    if (recorded.error || batch.find("--") != std::string::npos) continue;
    const std::string tree = test::dump(parse(batch));
    EXPECT_EQ(test::dump(parse(withLineEnds(batch, "\n"))), tree) << batch;
    EXPECT_EQ(test::dump(parse(withLineEnds(batch, "\r\n"))), tree) << batch;
  }
}

struct PrinterRow {
  const char* name;
  const char* batch;
  const char* printed;
};

void PrintTo(const PrinterRow& row, std::ostream* out) {
  *out << row.name;
}

class PrinterRowTest : public testing::TestWithParam<PrinterRow> {};

TEST_P(PrinterRowTest, PrintsAndKeepsTheTree) {
  EXPECT_EQ(print(parse(GetParam().batch)), GetParam().printed);
  expectSameTree(GetParam().batch);
}

const PrinterRow rows[] = {
    {"names with brackets and quotes are put in brackets",
     "select [a]]b], \"c\"\"d\", [e'f] from [中 文].[x.y]",
     "SELECT [a]]b], [c\"d], [e'f] FROM [中 文].[x.y];"},
    {"keywords as names are put in brackets", "select [from] as [select], [max], [n] from [order] [by]",
     "SELECT [from] AS [select], [max], n FROM [order] AS [by];"},
    {"names with line ends keep them", "select [a\r\nb]", "SELECT [a\r\nb];"},
    {"quotes in texts are doubled", "select 'it''s', N'''', ''", "SELECT 'it''s', N'''', '';"},
    {"parentheses only where they are needed", "select (a)+((b)*c), (a+b)*c, a-(b-c), (a-b)-c",
     "SELECT a + b * c, (a + b) * c, a - (b - c), a - b - c;"},
    {"signs do not become comments", "select - -1, a - -1, -(-a), +-+a",
     "SELECT - (- 1), a - (- 1), - (- a), + (- (+ a));"},
    {"a sign binds less tightly than a product", "select 100/-100*10, (-a)*b",
     "SELECT 100 / (- 100 * 10), (- a) * b;"},
    {"logic keeps its grouping", "select 1 where (a=1 or b=2) and not (c=3 and d=4) or e=5",
     "SELECT 1 WHERE (a = 1 OR b = 2) AND NOT (c = 3 AND d = 4) OR e = 5;"},
    {"joins on the right side get parentheses", "select 1 from a join b join c on c.x=b.x on b.y=a.y",
     "SELECT 1 FROM a INNER JOIN (b INNER JOIN c ON c.x = b.x) ON b.y = a.y;"},
    {"a union in parentheses keeps them", "(select 1 union select 2) union all (select 3) order by 1",
     "(SELECT 1 UNION SELECT 2) UNION ALL SELECT 3 ORDER BY 1;"},
    {"functions with names of keywords", "select left(a,1), [left](a,1), [cast](a), coalesce(a,b)",
     "SELECT left(a, 1), left(a, 1), [cast](a), coalesce(a, b);"},
    {"IIF is a CASE", "select iif(a=1,'x','y')", "SELECT CASE WHEN a = 1 THEN 'x' ELSE 'y' END;"},
    {"a compound assignment is told in full", "update t set a+=1,t.b*=c+1",
     "UPDATE t SET a = a + 1, t.b = t.b * (c + 1);"},
    {"an index of the old form", "drop index t.i", "DROP INDEX i ON t;"},
    {"defaults of columns that are there",
     "alter table t add a int, constraint d default N'x' for b, default 1 for c",
     "ALTER TABLE t ADD a int, CONSTRAINT d DEFAULT N'x' FOR b, DEFAULT 1 FOR c;"},
    {"arguments without quotes", "exec p -5, word, @a='x', null, default, 0xFF",
     "EXEC p - 5, 'word', @a = 'x', NULL, DEFAULT, 0xFF;"},
};

INSTANTIATE_TEST_SUITE_P(Rows, PrinterRowTest, testing::ValuesIn(rows));

}  // namespace
}  // namespace goodsbook::engine
