#include <QElapsedTimer>
#include <QPixmap>
#include <QScrollBar>

#include "tests/host/controls/grid_fixture.h"
#include "tests/host/data/memory_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int million = 1'000'000;

TEST(MillionRows, ScrollAndFollow) {
  RecordSet rows;
  const std::vector<engine::Column> columns{{"WL_ID", engine::Type::Text, 20},
                                            {"WL_NAME", engine::Type::Text, 80},
                                            {"SJ", engine::Type::Float},
                                            {"WL_YS", engine::Type::Bit}};
  rows.beginLoad(columns);
  for (std::int64_t i = 0; i < million; ++i) {
    rows.appendLoaded(test::MemoryRow(
        {std::to_string(1'000'000 + i), std::string("商品名称"), static_cast<double>(i) / 100, i % 2}));
  }
  rows.endLoad();

  TDBGridEh grid;
  std::vector<GridColumn> shown{{.field = u"WL_ID"_s},
                                {.field = u"WL_NAME"_s},
                                {.field = u"SJ"_s, .displayFormat = u"0.00"_s},
                                {.field = u"WL_YS"_s, .checkBox = true}};
  for (int i = 0; i < 16; ++i) shown.push_back({.field = i % 2 == 0 ? u"WL_NAME"_s : u"SJ"_s, .width = 60});
  grid.setColumns(shown);
  grid.setReadOnly(true);
  grid.setRowNumbers(true);
  QElapsedTimer clock;
  clock.start();
  grid.setRecordSet(&rows);
  grid.resize(1400, 900);
  grid.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
  const double openMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
  grid.grab();

  constexpr int pages = 20;
  clock.restart();
  for (int page = 0; page < pages; ++page) {
    QTest::keyClick(&grid, Qt::Key_PageDown);
    grid.viewport()->repaint();
  }
  const double pageMs = static_cast<double>(clock.nsecsElapsed()) / 1e6 / pages;
  const int afterPages = rows.currentRow();
  EXPECT_GT(afterPages, pages * 10);

  clock.restart();
  QTest::keyClick(&grid, Qt::Key_End);
  grid.viewport()->repaint();
  const double endMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
  EXPECT_EQ(rows.currentRow(), million - 1);
  EXPECT_LE(grid.visualRect(grid.currentIndex()).bottom(), grid.viewport()->height());
  RecordProperty("first_rows_ms", std::to_string(openMs));
  RecordProperty("page_ms", std::to_string(pageMs));
  std::printf("[          ] first rows %.1f ms, one page %.2f ms, to the end %.1f ms\n", openMs, pageMs,
              endMs);
}

}  // namespace
}  // namespace goodsbook
