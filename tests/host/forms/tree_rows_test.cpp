#include "host/forms/tree_rows.h"

#include <gtest/gtest.h>

#include <set>

namespace goodsbook {
namespace {

constexpr auto root = "Z";

// "code<parent" for each place in display order, "!" for an orphan, "." for the top level.
std::string shape(const std::vector<TreeRow>& rows) {
  std::string text;
  const std::vector<TreePlace> places = treeOf(rows, QString::fromLatin1(root));
  for (const TreePlace& place : places) {
    text += rows[static_cast<std::size_t>(place.row)].code.toStdString();
    if (place.parent >= 0) {
      const TreePlace& above = places[static_cast<std::size_t>(place.parent)];
      text += "<" + rows[static_cast<std::size_t>(above.row)].code.toStdString();
    } else {
      text += place.parent == TreePlace::orphanParent ? "!" : ".";
    }
    text += " ";
  }
  return text;
}

TEST(TreeRows, ChildrenFollowTheirParentInTheOrderGiven) {
  EXPECT_EQ(shape({{"0101", "01"}, {"01", "Z"}, {"0102", "01"}, {"02", "Z"}}), "01. 0101<01 0102<01 02. ");
}

TEST(TreeRows, CodesCompareWithoutCaseAndBlanks) {
  EXPECT_EQ(shape({{"a", "z"}, {"b", " A "}}), "a. b<a ");
}

TEST(TreeRows, RowsOfAnUnknownParentAreOrphansWithTheirChildren) {
  EXPECT_EQ(shape({{"1", "9"}, {"11", "1"}, {"2", "Z"}}), "2. 1! 11<1 ");
}

TEST(TreeRows, AnEmptyParentIsTheTopLevel) {
  EXPECT_EQ(shape({{"1", ""}}), "1. ");
}

TEST(TreeRows, ARingIsOpenedAtItsFirstRow) {
  EXPECT_EQ(shape({{"a", "c"}, {"b", "a"}, {"c", "b"}, {"d", "c"}}), "a! b<a c<b d<c ");
}

TEST(TreeRows, ARowThatIsItsOwnParentIsAnOrphan) {
  EXPECT_EQ(shape({{"a", "a"}, {"b", "a"}}), "a! b<a ");
}

TEST(TreeRows, EveryRowStandsInTheTreeOnceAlsoWithDoubledCodes) {
  const std::vector<TreeRow> rows{{"a", "Z"}, {"a", "Z"}, {"b", "a"}, {"c", "b"}, {"b", "c"}};
  std::set<int> seen;
  for (const TreePlace& place : treeOf(rows, QString::fromLatin1(root))) {
    EXPECT_TRUE(seen.insert(place.row).second);
  }
  EXPECT_EQ(seen.size(), rows.size());
}

TEST(TreeRows, AChainOfAHundredThousandRowsIsNoTrouble) {
  std::vector<TreeRow> rows;
  for (int i = 0; i < 100'000; ++i) {
    rows.push_back({QString::number(i), i == 0 ? QStringLiteral("Z") : QString::number(i - 1)});
  }
  EXPECT_EQ(treeOf(rows, QStringLiteral("Z")).size(), rows.size());
}

}  // namespace
}  // namespace goodsbook
