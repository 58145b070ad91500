#include "host/print/label_print.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <stdexcept>

#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/controls/progress.h"
#include "host/print/label_check.h"
#include "host/print/label_dialog.h"
#include "host/print/label_layouts.h"
#include "host/print/label_settings.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Labels {
  Q_DECLARE_TR_FUNCTIONS(Labels)
};

void begin(QPainter& painter, QPrinter& printer) {
  if (painter.begin(&printer)) return;
  throw std::runtime_error(
      Labels::tr("打印不能开始：打印机或文件 %1 写不进去。")
          .arg(printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName())
          .toStdString());
}

PrintPlace fit(PrintPlace place, const LabelJob& job) {
  place.page = job.page();
  place.resolution = job.printer.dpi;
  return place;
}

// The layout used last, else the first one.
LabelLayoutFile usualLayout() {
  const std::vector<LabelLayoutFile> all = labelLayouts(Session::current().programDir());
  const QString last = labelsettings::lastChoice().layout;
  const auto found = std::ranges::find_if(
      all, [&](const LabelLayoutFile& file) { return QFileInfo(file.path).fileName() == last; });
  return found != all.end() ? *found : all.front();
}

void printToFile(QWidget* parent, const RecordSet& rows, const QString& title, const QString& pdf) {
  const LabelLayoutFile chosen = usualLayout();
  if (!chosen.error.isEmpty()) throw std::runtime_error(chosen.error.toStdString());
  LabelJob job;
  job.layout = chosen.layout;
  job.printer = labelsettings::printerNamed({});
  job.count = rows.rowCount();
  job.row = labelRowsOf(rows);
  const LabelWarnings warnings = printLabelJob(parent, title, job, {.page = {}, .printer = {}, .pdf = pdf});
  if (!warnings.isEmpty()) DISPINFO(Labels::tr("标签已印出，请注意：\n%1").arg(warnings.summary()), 5);
}

}  // namespace

std::function<LabelRow(int)> labelRowsOf(const RecordSet& rows) {
  const auto field = [&rows](const QString& name) { return rows.fieldIndex(name); };
  const std::pair<LabelField, int> texts[] = {
      {LabelField::Code, field(u"WL_ID"_s)},        {LabelField::Barcode, field(u"TM"_s)},
      {LabelField::Name, field(u"WL_NAME"_s)},      {LabelField::Specification, field(u"WL_GG"_s)},
      {LabelField::Unit, field(u"DW_NAME"_s)},      {LabelField::Price, field(u"SJ"_s)},
      {LabelField::MemberPrice, field(u"VIPSJ"_s)}, {LabelField::Origin, field(u"CD"_s)}};
  return [&rows, texts = std::to_array(texts)](int index) {
    LabelRow row;
    for (const auto& [to, from] : texts) {
      if (from < 0) continue;
      const bool isPrice = to == LabelField::Price || to == LabelField::MemberPrice;
      row[to] = rows.textAt(index, from, isPrice ? G_PriceFormat : QString());
    }
    row[LabelField::Company] = G_CoName;
    return row;
  };
}

LabelWarnings printLabelJob(QWidget* over, const QString& title, const LabelJob& job, PrintPlace place) {
  LabelWarnings warnings;
  tellOffPaper(job, warnings);
  printAtOnce(over, title, fit(std::move(place), job), [&](QPrinter& printer, QWidget* above) {
    QPainter painter;
    begin(painter, printer);
    Progress progress(above, Labels::tr("正在打印标签…"), job.pageCount());
    LabelPainter labels(job.layout, job.printer);
    for (int page = 0; page < job.pageCount(); ++page) {
      progress.step(page);
      if (page > 0) printer.newPage();
      paintLabelPage(painter, labels, job, page, warnings);
    }
  });
  return warnings;
}

void printTestPage(QWidget* over, const LabelJob& job, PrintPlace place) {
  printAtOnce(over, Labels::tr("标签测试页"), fit(std::move(place), job), [&](QPrinter& printer, QWidget*) {
    QPainter painter;
    begin(painter, printer);
    paintTestPage(painter, job);
  });
}

void printLabels(QWidget* parent, const RecordSet& rows, const QString& title) {
  if (!rows.isOpen() || rows.isEmpty()) {
    DISPINFO(Labels::tr("没有标签可以打印，请先点击【生成】。"), 5);
    return;
  }
  const QString pdf = Session::current().desktop().takePrintTarget();
  if (!pdf.isEmpty()) {
    printToFile(parent, rows, title, pdf);
    return;
  }
  LabelDialog dialog(parent, rows, title);
  dialog.exec();
}

}  // namespace goodsbook
