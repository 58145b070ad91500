#include "host/print/list_print.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTimer>

#include "host/U_glo.h"
#include "host/data/errors.h"
#include "host/forms/Base.h"
#include "host/print/list_report.h"
#include "host/print/pdf_text.h"
#include "host/session.h"
#include "host/sheet/list_columns.h"
#include "host/sheet/progress.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct ListPrint {
  Q_DECLARE_TR_FUNCTIONS(ListPrint)
};

constexpr double marginMm = 12;

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

// The pages on a file; what a cancelled or failed print left is taken away again.
void printToFile(const ListReport& report, QPrinter& printer, const QString& path) {
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(path);
  try {
    paintReport(report, printer);
    makeTextSearchable(path);
  } catch (const EAbort&) {
    QFile::remove(path);
    throw;
  }
}

}  // namespace

void printList(QWidget* parent, const TDBGridEh& grid, const QString& title, const QString& filterText) {
  RecordSet* rows = grid.recordSet();
  if (rows == nullptr || !rows->isOpen()) return;
  rows->waitForAll();
  ListReport report = reportOf(grid, title, filterText);
  const QString target = Session::current().desktop().takePrintTarget();

  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(report.title);
  printer.setPageMargins({marginMm, marginMm, marginMm, marginMm}, QPageLayout::Millimeter);
  if (ListLayout::wantsLandscape(report.columns, printer.pageRect(QPrinter::Point).width())) {
    printer.setPageOrientation(QPageLayout::Landscape);
  }
  if (!target.isEmpty()) {
    Progress progress(parent, ListPrint::tr("正在打印…"), 2 * report.rowCount);
    report.onRow = [&](int done) { progress.step(done); };
    printToFile(report, printer, target);
    return;
  }

  QPrintPreviewDialog preview(&printer, parent);
  preview.setWindowTitle(ListPrint::tr("打印预览 — %1").arg(report.title));
  preview.resize(1000, 720);
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* to) {
    Progress progress(&preview, ListPrint::tr("正在排版…"), 2 * report.rowCount);
    report.onRow = [&](int done) { progress.step(done); };
    const bool whole = guarded(&preview, [&] { paintReport(report, *to); });
    if (!whole) QTimer::singleShot(0, &preview, &QDialog::reject);
  });
  preview.exec();
}

}  // namespace goodsbook
