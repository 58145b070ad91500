#include "engine/syntax/shape.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/syntax/parser.h"

namespace goodsbook::engine {
namespace {

struct Shaped {
  std::string text;
  std::vector<std::string> values;
  int firstOrdinal;
};

Shaped shapeOfLast(const std::string& batch) {
  const Script script = parse(batch);
  Shape shape;
  shapeOf(script, script.statements.back(), shape);
  Shaped shaped{shape.text, {}, shape.firstOrdinal};
  for (const LiteralValue& value : shape.values) shaped.values.emplace_back(value.value);
  return shaped;
}

std::string shapeText(const std::string& batch) {
  return shapeOfLast(batch).text;
}

TEST(ShapeTest, ValuesDoNotMatter) {
  EXPECT_EQ(shapeText("update t set a='x',b=1.5 where c=7"),
            shapeText("UPDATE t set a='it''s', b=2.25 where c=8;").replace(0, 6, "update"));
  EXPECT_EQ(shapeText("select a from t where b like '%x%'"), shapeText("select a\nfrom t  where b like ''"));
}

TEST(ShapeTest, KindsOfValuesMatter) {
  EXPECT_NE(shapeText("select a from t where b=1"), shapeText("select a from t where b='1'"));
  EXPECT_NE(shapeText("select a from t where b=1"), shapeText("select a from t where b=1.0"));
  EXPECT_NE(shapeText("select a from t where b='x'"), shapeText("select a from t where b=N'x'"));
  EXPECT_NE(shapeText("select 2147483647"), shapeText("select 2147483648"));
  EXPECT_EQ(shapeText("select 1"), shapeText("select 0002147483647"));
}

TEST(ShapeTest, SpellingOfNamesMatters) {
  EXPECT_NE(shapeText("select a from t"), shapeText("select A from t"));
}

TEST(ShapeTest, ValuesComeInTheirOrder) {
  const Shaped shaped = shapeOfLast("delete from t where a=1;insert into t values(2,'it''s',N'n',0xAB,-3)");
  EXPECT_EQ(shaped.values, (std::vector<std::string>{"2", "it's", "n", "AB", "3"}));
  EXPECT_EQ(shaped.firstOrdinal, 1);
}

TEST(ShapeTest, OrdinalsLeadToTheValues) {
  const Script script = parse("select 'x' from t where a='y' order by 1;select top 5 b from t where c=6");
  const auto& select =
      std::get<Select>(std::get<SelectStatement>(script.statements[1].node).query->terms[0].operand);
  Shape shape;
  shapeOf(script, script.statements[1], shape);
  ASSERT_EQ(shape.values.size(), 2U);
  const auto& top = std::get<Literal>(select.top->node);
  EXPECT_EQ(shape.values[static_cast<std::size_t>(top.ordinal - shape.firstOrdinal)].value, "5");
  const auto& six = std::get<Literal>(std::get<Comparison>(select.where->node).right->node);
  EXPECT_EQ(shape.values[static_cast<std::size_t>(six.ordinal - shape.firstOrdinal)].value, "6");
}

struct StructuralRow {
  const char* name;
  const char* batch;
  std::vector<std::string> values;  // those that are left to be replaced
};

void PrintTo(const StructuralRow& row, std::ostream* out) {
  *out << row.name;
}

class StructuralTest : public testing::TestWithParam<StructuralRow> {};

TEST_P(StructuralTest, BelongToTheShape) {
  EXPECT_EQ(shapeOfLast(GetParam().batch).values, GetParam().values);
}

const StructuralRow rows[] = {
    {"places in ORDER BY", "select a, b from t where c=1 order by 2 desc", {"1"}},
    {"styles of CONVERT", "select convert(varchar(10),'x',120)", {"x"}},
    {"widths of types", "select cast(1.5 as decimal(9,2))", {"1.5"}},
    {"aliases in quotes", "select 1 'a', 'b'=2, 3 as N'c'", {"1", "2", "3"}},
    {"whatever stands in a select that groups by a value", "select a+1 from t where b=2 group by a+1", {}},
    {"but not where it groups by columns", "select a, 0 from t where b=2 group by a", {"0", "2"}},
    {"whatever is ordered by a value in a union",
     "select a from t where b=1 union select c from u order by a+1",
     {}},
    {"seeds of identities and defaults", "create table t (a int identity(5,1), b int default 3)", {}},
    {"arguments without quotes", "exec p word, 'x'", {"x"}},
};

INSTANTIATE_TEST_SUITE_P(Rows, StructuralTest, testing::ValuesIn(rows));

}  // namespace
}  // namespace goodsbook::engine
