#include "host/data/record_set_model.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <memory>

#include "host/data/errors.h"
#include "tests/host/data/sample_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::loadUnits;

class RecordSetModelTest : public ::testing::Test {
 protected:
  void SetUp() override {
    model_.setColumns(
        {{.field = u"DW_ID"_s,
          .title = u"编号"_s,
          .format = {},
          .alignment = Qt::AlignCenter,
          .editable = true},
         {.field = u"abase"_s, .title = {}, .format = u"0.000"_s, .alignment = {}, .editable = true},
         {.field = u"t"_s, .title = {}, .format = {}, .alignment = {}, .editable = true, .checkBox = true},
         {.field = u"missing"_s, .title = {}, .format = {}, .alignment = {}}});
    loadUnits(rows_, {"A", "B", "C"});
    model_.setRecordSet(&rows_);
  }

  QString shown(int row, int column) const { return model_.index(row, column).data().toString(); }

  RecordSet rows_;
  RecordSetModel model_;
  QAbstractItemModelTester tester_{&model_, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(RecordSetModelTest, ShowsCellsAndHeadings) {
  EXPECT_EQ(model_.rowCount(), 3);
  EXPECT_EQ(model_.columnCount(), 4);
  EXPECT_EQ(shown(1, 0), u"B"_s);
  EXPECT_EQ(shown(1, 1), u"2.500"_s);
  EXPECT_EQ(shown(1, 3), QString());
  EXPECT_EQ(model_.index(0, 1).data(Qt::EditRole), QVariant(1.5));
  EXPECT_EQ(model_.index(0, 2).data(Qt::CheckStateRole).toInt(), Qt::Checked);
  EXPECT_EQ(model_.headerData(0, Qt::Horizontal), QVariant(u"编号"_s));
  EXPECT_EQ(model_.headerData(1, Qt::Horizontal), QVariant(u"abase"_s));
  EXPECT_EQ(model_.index(0, 1).data(Qt::TextAlignmentRole).value<Qt::Alignment>(),
            Qt::AlignRight | Qt::AlignVCenter);
}

TEST_F(RecordSetModelTest, FollowsRowsThatComeAndGo) {
  rows_.append();
  rows_.setValue(u"dw_id"_s, u"D"_s);
  EXPECT_EQ(model_.rowCount(), 4);
  EXPECT_EQ(shown(3, 0), u"D"_s);
  rows_.cancel();
  EXPECT_EQ(model_.rowCount(), 3);
  rows_.insert();
  rows_.setValue(u"dw_id"_s, u"0"_s);
  rows_.post();
  EXPECT_EQ(shown(0, 0), u"0"_s);
  rows_.remove();
  rows_.remove();
  EXPECT_EQ(shown(0, 0), u"B"_s);
  rows_.CancelUpdates();
  EXPECT_EQ(shown(0, 0), u"A"_s);
  rows_.clear();
  EXPECT_EQ(model_.rowCount(), 0);
}

TEST_F(RecordSetModelTest, FollowsSortFilterAndNewContents) {
  rows_.setSort(u"dw_id"_s, true);
  EXPECT_EQ(shown(0, 0), u"C"_s);
  rows_.setFiltered(true);
  ASSERT_TRUE(rows_.setFilter(u"n>1"_s));
  EXPECT_EQ(model_.rowCount(), 2);
  rows_.setValue(u"n"_s, 0);
  rows_.post();
  EXPECT_EQ(model_.rowCount(), 1);
  loadUnits(rows_, {"X", "Y", "Z"});
  EXPECT_EQ(shown(0, 0), u"Z"_s);
  rows_.close();
  EXPECT_EQ(model_.rowCount(), 0);
  rows_.create({{u"abase"_s, FieldType::Float, 0, u"率"_s, {}}});
  EXPECT_EQ(model_.headerData(1, Qt::Horizontal), QVariant(u"率"_s));
}

TEST_F(RecordSetModelTest, FollowsRowsThatArriveInSlices) {
  rows_.beginLoad(test::unitColumns());
  EXPECT_EQ(model_.rowCount(), 0);
  rows_.appendLoaded(test::unitRow("A", test::null, 1));
  rows_.publishLoaded();
  EXPECT_EQ(model_.rowCount(), 1);
  rows_.appendLoaded(test::unitRow("B", test::null, 2));
  rows_.appendLoaded(test::unitRow("C", test::null, 3));
  EXPECT_EQ(model_.rowCount(), 1);
  rows_.endLoad();
  EXPECT_EQ(model_.rowCount(), 3);
}

TEST_F(RecordSetModelTest, ChangesWhileControlsAreDisabledShowAtTheEnd) {
  rows_.disableControls();
  rows_.remove();
  rows_.append();
  rows_.setValue(u"dw_id"_s, u"D"_s);
  rows_.post();
  rows_.enableControls();
  EXPECT_EQ(model_.rowCount(), 3);
  EXPECT_EQ(shown(2, 0), u"D"_s);
}

TEST_F(RecordSetModelTest, EditsGoThroughTheSet) {
  EXPECT_TRUE(model_.setData(model_.index(1, 0), u"X"_s));
  EXPECT_EQ(rows_.currentRow(), 1);
  EXPECT_EQ(rows_.state(), RecordSet::State::Edit);
  EXPECT_TRUE(model_.setData(model_.index(2, 2), Qt::Unchecked, Qt::CheckStateRole));
  EXPECT_EQ(rows_.textAt(1, 0), u"X"_s);
  EXPECT_FALSE(rows_.flag(u"t"_s));
  EXPECT_FALSE(model_.setData(model_.index(0, 3), u"X"_s));
}

TEST_F(RecordSetModelTest, RefusedValuesAreToldAndChangeNothing) {
  QStringList told;
  QObject::connect(&model_, &RecordSetModel::editRefused, &model_,
                   [&](const QString& text) { told += text; });
  EXPECT_FALSE(model_.setData(model_.index(0, 1), u"abc"_s));
  ASSERT_EQ(told.size(), 1);
  EXPECT_TRUE(told[0].contains(u"abc"));
  QObject::connect(&rows_, &RecordSet::validateField, &rows_, [] { throw EAbort(); });
  EXPECT_FALSE(model_.setData(model_.index(0, 0), u"X"_s));
  EXPECT_EQ(told.size(), 1);
  EXPECT_EQ(shown(0, 0), u"A"_s);
}

TEST(RecordSetModel, OutlivesItsRecordSet) {
  RecordSetModel model;
  QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  model.setColumns({{.field = u"dw_id"_s, .title = {}, .format = {}, .alignment = {}}});
  {
    RecordSet rows;
    loadUnits(rows, {"A"});
    model.setRecordSet(&rows);
    EXPECT_EQ(model.rowCount(), 1);
  }
  EXPECT_EQ(model.rowCount(), 0);
  EXPECT_EQ(model.headerData(0, Qt::Horizontal), u"dw_id"_s);
}

}  // namespace
}  // namespace goodsbook
