#include "host/print/list_print.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QPageSize>

#include "host/U_glo.h"
#include "host/controls/progress.h"
#include "host/print/list_report.h"
#include "host/print/print_job.h"
#include "host/session.h"
#include "host/sheet/list_columns.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct ListPrint {
  Q_DECLARE_TR_FUNCTIONS(ListPrint)
};

QString cellText(const QAbstractItemModel& model, int row, int column) {
  const QModelIndex index = model.index(row, column);
  const QVariant box = index.data(Qt::CheckStateRole);
  if (box.isValid()) return box.toInt() == Qt::Checked ? u"√"_s : QString();
  return index.data(Qt::DisplayRole).toString();
}

ListReport reportOf(const TDBGridEh& grid, const QString& title, const QString& filterText) {
  const std::vector<ShownColumn> shown = shownColumns(grid);
  const QAbstractItemModel& model = *grid.model();
  ListReport report;
  report.company = G_CoName;
  report.title = title.trimmed();
  report.filter = filterText;
  report.date = Session::current().desktop().now().toString(u"yyyy-MM-dd HH:mm"_s);
  report.rowCount = model.rowCount();
  bool anySum = false;
  for (const ShownColumn& column : shown) {
    const GridColumn& declared = grid.columns()[static_cast<std::size_t>(column.index)];
    const QVariant alignment = model.index(0, column.index).data(Qt::TextAlignmentRole);
    report.columns.push_back({column.title, static_cast<double>(column.width),
                              alignment.isValid() ? Qt::Alignment(alignment.toInt()) : Qt::AlignLeft});
    report.hideRepeats.push_back(declared.hideRepeats);
    report.sums << grid.footerText(declared.field);
    anySum |= declared.sum;
  }
  if (!anySum) report.sums.clear();
  if (anySum && report.sums.first().isEmpty()) report.sums.first() = ListPrint::tr("合计");
  report.cells = [&model, shown](int row) {
    QStringList cells;
    cells.reserve(static_cast<qsizetype>(shown.size()));
    for (const ShownColumn& column : shown) cells << cellText(model, row, column.index);
    return cells;
  };
  return report;
}

}  // namespace

void printList(QWidget* parent, const TDBGridEh& grid, const QString& title, const QString& filterText) {
  RecordSet* rows = grid.recordSet();
  if (rows == nullptr || !rows->isOpen()) return;
  rows->waitForAll();
  ListReport report = reportOf(grid, title, filterText);
  const double across =
      QPageSize(QPageSize::A4).size(QPageSize::Point).width() - 2 * printMargin(QPageLayout::Point);
  const auto orientation =
      ListLayout::wantsLandscape(report.columns, across) ? QPageLayout::Landscape : QPageLayout::Portrait;
  runPrintJob(parent, report.title, orientation, [&report](QPrinter& printer, QWidget* over) {
    Progress progress(over, ListPrint::tr("正在排版…"), 2 * report.rowCount);
    report.onRow = [&progress](int done) { progress.step(done); };
    paintReport(report, printer);
  });
}

}  // namespace goodsbook
