#include <gtest/gtest.h>

#include "host/data/record_set.h"
#include "tests/host/data/sample_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::column;
using test::loadUnits;
using Kind = RecordSet::Change::Kind;

class ChangeLogTest : public ::testing::Test {
 protected:
  void SetUp() override { loadUnits(rows_, {"A", "B", "C"}); }

  void put(int row, const QString& field, const QVariant& value) {
    rows_.moveTo(row);
    rows_.setValue(field, value);
    rows_.post();
  }

  void add(const QString& id) {
    rows_.append();
    rows_.setValue(u"dw_id"_s, id);
    rows_.post();
  }

  RecordSet rows_;
};

TEST_F(ChangeLogTest, NothingIsLoggedBeforeAPost) {
  rows_.setValue(u"n"_s, 9);
  EXPECT_FALSE(rows_.hasChanges());
  rows_.post();
  EXPECT_TRUE(rows_.hasChanges());
}

TEST_F(ChangeLogTest, SeveralEditsOfOneRowAreOneChange) {
  put(1, u"n"_s, 20);
  put(1, u"n"_s, 21);
  put(1, u"dw_name"_s, QVariant());
  const auto changes = rows_.changes();
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_EQ(changes[0].kind, Kind::Updated);
  EXPECT_EQ(changes[0].oldValues[1], QVariant(u"B名"_s));
  EXPECT_EQ(changes[0].oldValues[2], QVariant(qlonglong{2}));
  EXPECT_EQ(changes[0].newValues[2], QVariant(qlonglong{21}));
  EXPECT_EQ(changes[0].isChanged, (std::vector<bool>{false, true, true, false, false, false, false}));
  EXPECT_FALSE(changes[0].newValues[1].isValid());
}

TEST_F(ChangeLogTest, AnEditTakenBackIsNoChange) {
  put(0, u"n"_s, 20);
  put(0, u"n"_s, 1);
  EXPECT_FALSE(rows_.hasChanges());
  rows_.edit();
  rows_.setValue(u"n"_s, 1);
  rows_.post();
  EXPECT_FALSE(rows_.hasChanges());
}

TEST_F(ChangeLogTest, AddedRowTellsWhatWasSet) {
  add(u"D"_s);
  put(3, u"n"_s, 4);
  const auto changes = rows_.changes();
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_EQ(changes[0].kind, Kind::Inserted);
  EXPECT_TRUE(changes[0].oldValues.empty());
  EXPECT_EQ(changes[0].newValues[0], QVariant(u"D"_s));
  EXPECT_EQ(changes[0].isChanged, (std::vector<bool>{true, false, true, false, false, false, false}));
}

TEST_F(ChangeLogTest, AddedAndRemovedAgainVanishes) {
  add(u"D"_s);
  rows_.remove();
  EXPECT_FALSE(rows_.hasChanges());
  EXPECT_TRUE(rows_.changes().empty());
}

TEST_F(ChangeLogTest, RemovedRowKeepsItsLoadedValues) {
  put(1, u"n"_s, 20);
  rows_.remove();
  const auto changes = rows_.changes();
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_EQ(changes[0].kind, Kind::Deleted);
  EXPECT_EQ(changes[0].oldValues[0], QVariant(u"B"_s));
  EXPECT_EQ(changes[0].oldValues[2], QVariant(qlonglong{2}));
}

TEST_F(ChangeLogTest, ChangesComeInTheOrderOfTheirRowsFirstChange) {
  put(2, u"n"_s, 30);
  put(0, u"n"_s, 10);
  add(u"D"_s);
  put(2, u"n"_s, 31);
  QStringList order;
  for (const auto& change : rows_.changes()) {
    order += change.kind == Kind::Inserted ? change.newValues[0].toString() : change.oldValues[0].toString();
  }
  EXPECT_EQ(order.join(u' '), u"C A D"_s);
}

TEST_F(ChangeLogTest, CancelUpdatesBringsBackRowsValuesAndPlaces) {
  put(0, u"n"_s, 10);
  add(u"D"_s);
  rows_.moveTo(1);
  rows_.remove();
  rows_.moveTo(1);
  rows_.insert();
  rows_.setValue(u"dw_id"_s, u"E"_s);
  rows_.post();
  rows_.moveTo(0);
  rows_.remove();
  rows_.setValue(u"n"_s, 5);
  rows_.CancelUpdates();
  EXPECT_EQ(rows_.state(), RecordSet::State::Browse);
  EXPECT_EQ(column(rows_, u"dw_id"_s), u"A B C"_s);
  EXPECT_EQ(column(rows_, u"n"_s), u"1 2 3"_s);
  EXPECT_FALSE(rows_.hasChanges());
}

TEST_F(ChangeLogTest, MergedChangesAreWhatCancelReturnsTo) {
  put(0, u"n"_s, 10);
  add(u"D"_s);
  rows_.moveTo(1);
  rows_.remove();
  rows_.setValue(u"n"_s, 33);
  rows_.mergeChangeLog();
  EXPECT_FALSE(rows_.hasChanges());
  EXPECT_EQ(column(rows_, u"n"_s), u"10 33 "_s);
  put(2, u"n"_s, 4);
  put(0, u"n"_s, 11);
  rows_.remove();
  EXPECT_EQ(rows_.changes()[0].oldValues[0], QVariant(u"D"_s));
  rows_.CancelUpdates();
  EXPECT_EQ(column(rows_, u"dw_id"_s), u"A C D"_s);
  EXPECT_EQ(column(rows_, u"n"_s), u"10 33 "_s);
}

TEST_F(ChangeLogTest, CancelUpdatesKeepsSortAndFilter) {
  rows_.setSort(u"dw_id"_s, true);
  ASSERT_TRUE(rows_.setFilter(u"dw_id<>'B'"_s));
  rows_.setFiltered(true);
  put(0, u"dw_id"_s, u"B"_s);
  EXPECT_EQ(column(rows_, u"dw_id"_s), u"A"_s);
  rows_.CancelUpdates();
  EXPECT_EQ(column(rows_, u"dw_id"_s), u"C A"_s);
}

TEST_F(ChangeLogTest, NewContentsStartANewLog) {
  put(0, u"n"_s, 10);
  loadUnits(rows_, {"A"});
  EXPECT_FALSE(rows_.hasChanges());
}

}  // namespace
}  // namespace goodsbook
