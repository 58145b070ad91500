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

void runPrintJob(QWidget* parent, const QString& title, QPageLayout::Orientation orientation,
                 const std::function<void(QPrinter& printer, QWidget* over)>& paint) {
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(title);
  printer.setPageOrientation(orientation);
  const double margin = printMargin(QPageLayout::Millimeter);
  printer.setPageMargins({margin, margin, margin, margin}, QPageLayout::Millimeter);

  const QString target = Session::current().desktop().takePrintTarget();
  if (!target.isEmpty()) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(target);
    try {
      paint(printer, parent);
    } catch (...) {
      QFile::remove(target);
      throw;
    }
    makeTextSearchable(target);
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
