#include "host/print/print_job.h"

#include <QCoreApplication>
#include <QFile>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>
#include <QWidget>

#include "host/forms/Base.h"
#include "host/print/pdf_text.h"
#include "host/session.h"

namespace goodsbook {

double printMargin(QPageLayout::Unit unit) {
  constexpr double millimeters = 12, pointsPerMillimeter = 72 / 25.4;
  return unit == QPageLayout::Millimeter ? millimeters : millimeters * pointsPerMillimeter;
}

namespace {

using Paint = std::function<void(QPrinter& printer, QWidget* over)>;

void printToPdf(QPrinter& printer, const QString& file, QWidget* over, const Paint& paint) {
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(file);
  try {
    paint(printer, over);
  } catch (...) {
    QFile::remove(file);
    throw;
  }
  makeTextSearchable(file);
}

}  // namespace

void printAtOnce(QWidget* over, const QString& title, const PrintPlace& place, const Paint& paint) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(title);
  if (!place.printer.isEmpty() && place.pdf.isEmpty()) printer.setPrinterName(place.printer);
  if (place.resolution > 0) printer.setResolution(place.resolution);
  printer.setPageLayout(place.page);
  printer.setFullPage(true);
  if (place.pdf.isEmpty()) {
    paint(printer, over);
  } else {
    printToPdf(printer, place.pdf, over, paint);
  }
}

void runPrintJob(QWidget* parent, const QString& title, QPageLayout::Orientation orientation,
                 const Paint& paint) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(title);
  printer.setPageOrientation(orientation);
  const double margin = printMargin(QPageLayout::Millimeter);
  printer.setPageMargins({margin, margin, margin, margin}, QPageLayout::Millimeter);

  const QString target = Session::current().desktop().takePrintTarget();
  if (!target.isEmpty()) {
    printToPdf(printer, target, parent, paint);
    return;
  }

  QPrintPreviewDialog preview(&printer, parent);
  preview.setWindowTitle(QCoreApplication::translate("PrintJob", "打印预览 — %1").arg(title));
  constexpr QSize comfortable(1000, 720);
  preview.resize(comfortable.boundedTo(preview.screen()->availableSize() * 0.9));
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* to) {
    if (!guarded(&preview, [&] { paint(*to, &preview); }))
      QMetaObject::invokeMethod(&preview, &QDialog::reject, Qt::QueuedConnection);
  });
  preview.exec();
}

}  // namespace goodsbook
