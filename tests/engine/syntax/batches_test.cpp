#include "engine/syntax/batches.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "engine/syntax/parser.h"
#include "tests/engine/support/cases.h"

namespace goodsbook::engine {
namespace {

using Parts = std::vector<std::pair<std::string, int>>;

Parts split(std::string_view script) {
  Parts parts;
  for (const BatchText& batch : splitBatches(script)) {
    std::string text(batch.text);
    while (!text.empty() && text.back() <= ' ') text.pop_back();
    parts.emplace_back(std::move(text), batch.line);
  }
  return parts;
}

TEST(BatchesTest, SplitsAtLinesOfGo) {
  EXPECT_EQ(split("select 1\ngo\nselect 2\r\n  Go  \r\nselect 3"),
            (Parts{{"select 1", 1}, {"select 2", 3}, {"select 3", 5}}));
}

TEST(BatchesTest, LeavesOutWhatIsEmpty) {
  EXPECT_EQ(split("go\n\n-- a\nGO\nselect 1\ngo\n"), (Parts{{"select 1", 5}}));
}

TEST(BatchesTest, DoesNotSplitInsideTextsCommentsAndLines) {
  EXPECT_EQ(split("select 'a\ngo\nb'"), (Parts{{"select 'a\ngo\nb'", 1}}));
  EXPECT_EQ(split("select /*\ngo\n*/ 1"), (Parts{{"select /*\ngo\n*/ 1", 1}}));
  EXPECT_EQ(split("select 1 as go"), (Parts{{"select 1 as go", 1}}));
  EXPECT_EQ(split("select gone\nfrom go"), (Parts{{"select gone\nfrom go", 1}}));
}

TEST(BatchesTest, TakesAByteOrderMark) {
  EXPECT_EQ(split("\xEF\xBB\xBFselect 1"), (Parts{{"select 1", 1}}));
}

TEST(BatchesTest, TheTablesOfTheCasesAreBatchesThatParse) {
  const auto batches = splitBatches(test::preludeScript());
  EXPECT_EQ(batches.size(), 42U);
  for (const BatchText& batch : batches) EXPECT_EQ(parse(batch.text).statements.size(), 1U) << batch.text;
}

}  // namespace
}  // namespace goodsbook::engine
