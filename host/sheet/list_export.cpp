#include "host/sheet/list_export.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "host/controls/progress.h"
#include "host/session.h"
#include "host/sheet/list_columns.h"
#include "host/sheet/sheet_table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct ListExport {
  Q_DECLARE_TR_FUNCTIONS(ListExport)
};

// The columns of the grid that stand on a field of its record set.
std::vector<SheetColumn> sheetColumns(const TDBGridEh& grid) {
  std::vector<SheetColumn> columns;
  for (const ShownColumn& shown : shownColumns(grid)) {
    const GridColumn& column = grid.columns()[static_cast<std::size_t>(shown.index)];
    const int field = grid.recordSet()->fieldIndex(column.field);
    if (field < 0 || column.button) continue;
    const QString& own = grid.recordSet()->field(field).displayFormat;
    columns.push_back(
        {field, shown.title, shown.width, column.displayFormat.isEmpty() ? own : column.displayFormat});
  }
  return columns;
}

}  // namespace

void exportList(QWidget* parent, const TDBGridEh& grid, const QString& title) {
  RecordSet* rows = grid.recordSet();
  if (rows == nullptr || !rows->isOpen()) return;
  const QString filter = ListExport::tr("电子表格 (*.xlsx);;CSV 文本 (*.csv)");
  const QString path = Session::current().desktop().saveFile(parent, ListExport::tr("导出"),
                                                             title.trimmed() + u".xlsx"_s, filter);
  if (path.isEmpty()) return;
  const bool csv = path.endsWith(".csv"_L1, Qt::CaseInsensitive);

  rows->waitForAll();
  Progress progress(parent, ListExport::tr("正在导出…"), rows->rowCount());
  const SheetTable table{*rows, sheetColumns(grid), title, [&](int row) { progress.step(row); }};
  if (csv) {
    writeCsv(table, path);
  } else {
    writeXlsx(table, path);
  }
}

}  // namespace goodsbook
