#include <QApplication>
#include <QScrollBar>
#include <algorithm>
#include <vector>

#include "benchmarks/figure.h"
#include "benchmarks/suites.h"
#include "host/controls/TDBGridEh.h"
#include "host/data/database.h"
#include "host/data/progressive_load.h"
#include "host/data/record_set.h"

using namespace Qt::StringLiterals;

namespace goodsbook::benchmarks {

int gridFigures(const std::string& databaseFile) {
  const auto database = openEmbeddedDatabase(QString::fromStdString(databaseFile), {.create = false});
  RecordSet rows;
  TDBGridEh grid;
  std::vector<GridColumn> columns;
  for (const QString& field :
       {u"WL_YS"_s, u"WL_ID"_s, u"TMC"_s, u"TM"_s, u"WL_NAME"_s, u"WL_GG"_s, u"CLASS_NAME"_s, u"DW_NAME"_s,
        u"DWCOUNT"_s, u"SJ"_s, u"VIPSJ"_s, u"PFJ"_s, u"CGJ"_s, u"DJ"_s, u"CD"_s, u"BDATE"_s, u"EDATE"_s,
        u"USER_NAME"_s, u"NOTE"_s}) {
    columns.push_back({.field = field, .width = 80});
  }
  grid.setColumns(columns);
  grid.setRecordSet(&rows);
  grid.resize(1600, 900);
  grid.show();
  QApplication::processEvents();

  ProgressiveLoad load(rows);
  int missed = 0;
  const double first = milliseconds([&] {
    load.start(*database, QString::fromStdString(productList()));
    grid.grab();
  });
  missed += !print({"first rows of the product list on screen", "ms", first, 0, 150});

  load.waitForAll();
  QApplication::processEvents();
  std::vector<double> pages;
  QScrollBar* bar = grid.verticalScrollBar();
  for (int page = 0; page < 200; ++page) {
    pages.push_back(milliseconds([&] {
      bar->setValue(bar->value() + bar->pageStep());
      grid.viewport()->grab();
    }));
  }
  std::ranges::sort(pages);
  missed += !print({"scroll one page of that list", "ms", pages[pages.size() * 95 / 100], 0, 16});
  return missed;
}

}  // namespace goodsbook::benchmarks
