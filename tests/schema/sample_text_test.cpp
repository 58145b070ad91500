#include <gtest/gtest.h>

#include <vector>

#include "schema/sample/rows.h"
#include "schema/sample/sample.h"

namespace goodsbook::sample {
namespace {

std::vector<std::string> shopStatements(int products) {
  std::vector<std::string> batches;
  const Tools tools{.execute = [&](std::string_view batch) { batches.emplace_back(batch); },
                    .initials = [](std::string_view name) { return "P" + std::to_string(name.size() / 3); }};
  startingSet(tools);
  sampleGoods(tools, {.products = products, .makePicture = [](int index, std::string_view text) {
                        return "picture " + std::to_string(index) + std::string(text);
                      }});
  return batches;
}

TEST(SampleText, IsTheSameWithEveryRun) {
  EXPECT_EQ(shopStatements(2000), shopStatements(2000));
}

TEST(SampleText, NeedsNoProducts) {
  EXPECT_FALSE(shopStatements(0).empty());
}

TEST(SampleText, QuotesAndNumbersAreWrittenAsTheServerReadsThem) {
  EXPECT_EQ(quoted("it's 瓶"), "N'it''s 瓶'");
  EXPECT_EQ(cents(-5), "-0.05");
  EXPECT_EQ(cents(123456), "1234.56");
  EXPECT_EQ(binary(std::string_view("\x00\xFF", 2)), "0x00FF");
  EXPECT_EQ(padded(7, 3), "007");
  EXPECT_EQ(dateText(20'757), "2026-10-31");
  EXPECT_EQ(shortDate(20'757), "261031");
}

TEST(SampleText, RowsGoOutInEqualPortions) {
  std::vector<std::string> batches;
  const Tools tools{.execute = [&](std::string_view batch) { batches.emplace_back(batch); }, .initials = {}};
  Rows rows(tools, "T (a,b)", 2);
  for (int i = 1; i <= 21; ++i) rows.number(i).text("x").end();
  rows.flush();
  rows.flush();
  ASSERT_EQ(batches.size(), 2U);
  EXPECT_TRUE(batches[0].starts_with(
      "insert into T (a,b) values\n(1,N'x'),\n(2,N'x')\ninsert into T (a,b) values\n(3,N'x'),"));
  EXPECT_TRUE(batches[0].ends_with("(20,N'x')\n"));
  EXPECT_EQ(batches[1], "insert into T (a,b) values\n(21,N'x')\n");
}

}  // namespace
}  // namespace goodsbook::sample
