#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using GridCommands = SampleScreenTest;

QJsonObject onGrid(const QString& command, QJsonObject fields) {
  fields.insert(u"cmd"_s, command);
  fields.insert(u"element"_s, u"DBGridEh"_s);
  return fields;
}

QJsonObject column(const QString& field, const QString& title, int width, bool visible, bool readonly) {
  return {{u"field"_s, field},
          {u"title"_s, title},
          {u"width"_s, width},
          {u"visible"_s, visible},
          {u"readonly"_s, readonly}};
}

TEST_F(GridCommands, RowsTellColumnsAndEveryFieldAsShown) {
  const QJsonObject reply = done(onGrid(u"rows"_s, {}));
  EXPECT_EQ(reply["count"_L1], 3);
  EXPECT_EQ(reply["current"_L1], 0);
  EXPECT_EQ(reply["columns"_L1].toArray(), (QJsonArray{column(u"dw_id"_s, u"编号"_s, 60, true, true),
                                                       column(u"dw_name"_s, u"名称"_s, 120, true, false),
                                                       column(u"sj"_s, u"售价"_s, 80, false, true),
                                                       column(u"ys"_s, u"有效"_s, 50, true, false)}));
  EXPECT_EQ(reply["rows"_L1].toArray().at(1).toObject(), (QJsonObject{{u"DW_ID"_s, u"02"_s},
                                                                      {u"DW_NAME"_s, u"单位2"_s},
                                                                      {u"SJ"_s, u"3.00"_s},
                                                                      {u"YS"_s, u"1"_s},
                                                                      {u"PYM"_s, u""_s}}));
}

TEST_F(GridCommands, TheRecordSetBehindTheGridAnswersTheSame) {
  QJsonObject command = onGrid(u"rows"_s, {});
  const QJsonObject byGrid = done(command);
  command.insert(u"element"_s, u"AdoQry_Main"_s);
  EXPECT_EQ(done(command), byGrid);
}

TEST_F(GridCommands, OffsetAndLimitCutTheListAndNotTheCount) {
  const QJsonObject reply = done(onGrid(u"rows"_s, {{u"offset"_s, 1}, {u"limit"_s, 1}}));
  EXPECT_EQ(reply["count"_L1], 3);
  ASSERT_EQ(reply["rows"_L1].toArray().size(), 1);
  EXPECT_EQ(reply["rows"_L1][0]["DW_ID"_L1], u"02"_s);
  EXPECT_EQ(done(onGrid(u"rows"_s, {{u"offset"_s, 9}}))["rows"_L1].toArray().size(), 0);
}

TEST_F(GridCommands, RowMakesARowCurrent) {
  done(onGrid(u"row"_s, {{u"index"_s, 2}}));
  EXPECT_EQ(done(onGrid(u"rows"_s, {}))["current"_L1], 2);
  EXPECT_TRUE(refused(onGrid(u"row"_s, {{u"index"_s, 3}})).contains(u"3"_s));
  EXPECT_TRUE(refused(onGrid(u"row"_s, {{u"index"_s, -1}})).contains(u"-1"_s));
}

TEST_F(GridCommands, SelectPicksRowsInTheOrderGiven) {
  done(onGrid(u"select"_s, {{u"rows"_s, QJsonArray{2, 0}}}));
  onGui([this] {
    const auto picked = screen->grid->selectedRows();
    ASSERT_EQ(picked.size(), 2U);
    EXPECT_EQ(screen->AdoQry_Main.rowOf(picked[0]), 2);
    EXPECT_EQ(screen->AdoQry_Main.rowOf(picked[1]), 0);
  });
  EXPECT_TRUE(refused(onGrid(u"select"_s, {{u"rows"_s, QJsonArray{0, 7}}})).contains(u"7"_s));
}

TEST_F(GridCommands, CellEditsThroughTheEditorAndCommits) {
  done(onGrid(u"cell"_s, {{u"row"_s, 1}, {u"field"_s, u"dw_name"_s}, {u"text"_s, u"公斤"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s)[1]["DW_NAME"_L1], u"公斤"_s);
  done(onGrid(u"cell"_s, {{u"row"_s, 0}, {u"field"_s, u"ys"_s}, {u"text"_s, u"1"_s}}));
  done(onGrid(u"cell"_s, {{u"row"_s, 1}, {u"field"_s, u"ys"_s}, {u"text"_s, u"0"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["YS"_L1], u"1"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[1]["YS"_L1], u"0"_s);
}

TEST_F(GridCommands, ReadOnlyCellsAndUnknownColumnsAreNamed) {
  const auto cell = [this](int row, const QString& field) {
    return refused(onGrid(u"cell"_s, {{u"row"_s, row}, {u"field"_s, field}, {u"text"_s, u"x"_s}}));
  };
  EXPECT_TRUE(cell(0, u"dw_id"_s).contains(u"dw_id"_s));
  EXPECT_TRUE(cell(0, u"nothing"_s).contains(u"nothing"_s));
  EXPECT_TRUE(cell(8, u"dw_name"_s).contains(u"8"_s));
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["DW_ID"_L1], u"01"_s);
}

TEST_F(GridCommands, ADoubleClickOnACellIsOneOnItsRow) {
  done(onGrid(u"cellclick"_s, {{u"row"_s, 1}, {u"field"_s, u"dw_id"_s}, {u"double"_s, true}}));
  onGui([this] {
    EXPECT_EQ(screen->doubleClicks, 1);
    EXPECT_EQ(screen->AdoQry_Main.currentRow(), 1);
  });
}

TEST_F(GridCommands, WhatIsNoGridIsNamed) {
  EXPECT_TRUE(refused({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"AdoQry_None"_s}}).contains(u"AdoQry_None"_s));
  EXPECT_TRUE(refused({{u"cmd"_s, u"select"_s}, {u"element"_s, u"Edit1"_s}, {u"rows"_s, QJsonArray{}}})
                  .contains(u"Edit1"_s));
}

}  // namespace
}  // namespace goodsbook
