#include <QTreeWidget>

#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using TreeCommands = SampleScreenTest;

QJsonObject node(const QString& caption, int depth, bool selected) {
  return {{u"caption"_s, caption}, {u"depth"_s, depth}, {u"selected"_s, selected}};
}

QJsonObject choose(const QJsonValue& code) {
  return {{u"cmd"_s, u"node"_s}, {u"code"_s, code}};
}

TEST_F(TreeCommands, TreeListsNodesInDisplayOrder) {
  EXPECT_EQ(done({{u"cmd"_s, u"tree"_s}})["nodes"_L1].toArray(),
            (QJsonArray{node(u"01 食品 (3)"_s, 0, false), node(u"0101 糖果"_s, 1, false),
                        node(u"02 百货"_s, 0, false)}));
}

TEST_F(TreeCommands, NodeSelectsByTheCodeOfTheCaptionAndNullSelectsNothing) {
  done(choose(u"0101"_s));
  EXPECT_EQ(done({{u"cmd"_s, u"tree"_s}})["nodes"_L1][1]["selected"_L1], true);
  onGui([this] { EXPECT_EQ(screen->tree->currentItem()->text(0), u"0101 糖果"_s); });
  done(choose(QJsonValue::Null));
  onGui([this] { EXPECT_EQ(screen->tree->currentItem(), nullptr); });
  EXPECT_EQ(done({{u"cmd"_s, u"tree"_s}})["nodes"_L1][1]["selected"_L1], false);
}

TEST_F(TreeCommands, RowsOfATreeAreItsNodes) {
  done(choose(u"0101"_s));
  const QJsonObject reply = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"TreeView"_s}});
  EXPECT_EQ(reply["count"_L1], 3);
  EXPECT_EQ(reply["current"_L1], 1);
  EXPECT_EQ(reply["columns"_L1][1]["field"_L1], u"CAPTION"_s);
  EXPECT_EQ(reply["rows"_L1][1].toObject(),
            (QJsonObject{{u"CODE"_s, u"0101"_s}, {u"CAPTION"_s, u"0101 糖果"_s}, {u"DEPTH"_s, u"1"_s}}));
  const QJsonObject last =
      done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"TreeView"_s}, {u"offset"_s, 2}, {u"limit"_s, 5}});
  EXPECT_EQ(last["count"_L1], 3);
  ASSERT_EQ(last["rows"_L1].toArray().size(), 1);
  EXPECT_EQ(last["rows"_L1][0]["CODE"_L1], u"02"_s);
}

TEST_F(TreeCommands, AnElementWithoutRowsIsNamedAsSuch) {
  EXPECT_EQ(refused({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"Edit1"_s}}), u"元素 Edit1 不是表格"_s);
  EXPECT_EQ(refused({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"Nothing"_s}}), u"没有元素 Nothing"_s);
}

TEST_F(TreeCommands, UnknownNodesAndTreesAreNamed) {
  EXPECT_TRUE(refused(choose(u"0199"_s)).contains(u"0199"_s));
  EXPECT_TRUE(refused({{u"cmd"_s, u"tree"_s}, {u"element"_s, u"Edit1"_s}}).contains(u"Edit1"_s));
}

}  // namespace
}  // namespace goodsbook
