#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QTest>

#include "host/controls/TDBGridEh.h"
#include "host/data/record_set.h"

namespace goodsbook {

// A grid over a small list of goods, shown.
class GridTest : public testing::Test {
 protected:
  static std::vector<Field> fields() {
    return {{.name = QStringLiteral("WL_ID"), .size = 6, .label = QStringLiteral("编号")},
            {.name = QStringLiteral("WL_NAME"), .size = 20, .label = QStringLiteral("名称")},
            {.name = QStringLiteral("SJ"),
             .type = FieldType::Float,
             .label = QStringLiteral("售价"),
             .displayFormat = QStringLiteral("0.00")},
            {.name = QStringLiteral("SL"), .type = FieldType::Integer},
            {.name = QStringLiteral("WL_YS"), .type = FieldType::Boolean},
            {.name = QStringLiteral("COST"), .type = FieldType::Float}};
  }

  static std::vector<GridColumn> columns() {
    return {{.field = QStringLiteral("WL_ID"), .width = 80},
            {.field = QStringLiteral("WL_NAME"), .width = 160, .readOnly = false},
            {.field = QStringLiteral("SJ"), .width = 80, .readOnly = false, .sum = true, .decimalPlaces = 2},
            {.field = QStringLiteral("SL"), .width = 60, .readOnly = false, .sum = true},
            {.field = QStringLiteral("WL_YS"),
             .title = QStringLiteral("有效"),
             .width = 50,
             .readOnly = false,
             .checkBox = true},
            {.field = QStringLiteral("MORE"), .title = QStringLiteral("多条码"), .width = 60, .button = true},
            {.field = QStringLiteral("COST"), .width = 60, .visible = false}};
  }

  void SetUp() override {
    rows.create(fields());
    add("A1", "苹果", 3.5, 10, true);
    add("B2", "香蕉", 12, 2, false);
    add("C3", "橙子", 0.75, 100, true);
    add("D4", "梨", 9.9, 9, false);
    rows.mergeChangeLog();
    rows.first();
    grid.setObjectName(QStringLiteral("DBGridEh"));
    grid.setColumns(columns());
    grid.setRecordSet(&rows);
    grid.resize(620, 300);
    grid.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    grid.setFocus();
  }

  void add(const char* code, const char* name, double price, int count, bool valid) {
    rows.append();
    rows.setValue(QStringLiteral("WL_ID"), QString::fromUtf8(code));
    rows.setValue(QStringLiteral("WL_NAME"), QString::fromUtf8(name));
    rows.setValue(QStringLiteral("SJ"), price);
    rows.setValue(QStringLiteral("SL"), count);
    rows.setValue(QStringLiteral("WL_YS"), valid);
    rows.post();
  }

  QString codes() const {
    QStringList all;
    for (int row = 0; row < rows.rowCount(); ++row) all << rows.textAt(row, 0);
    return all.join(u' ');
  }

  QString picked() const {
    QStringList all;
    for (const RecordSet::Bookmark row : grid.selectedRows()) all << rows.textAt(rows.rowOf(row), 0);
    return all.join(u' ');
  }

  QPoint cellCentre(int row, const QString& field) {
    return grid.visualRect(grid.model()->index(row, grid.columnOf(field))).center();
  }

  void clickRow(int row, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, modifiers, cellCentre(row, QStringLiteral("WL_ID")));
  }

  RecordSet rows;
  TDBGridEh grid;
};

}  // namespace goodsbook
