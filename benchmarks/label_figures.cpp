#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPrinter>
#include <QTemporaryDir>
#include <algorithm>
#include <vector>

#include "benchmarks/figure.h"
#include "benchmarks/suites.h"
#include "host/print/bar_code.h"
#include "host/print/label_layouts.h"
#include "host/print/label_print.h"

using namespace Qt::StringLiterals;

namespace goodsbook::benchmarks {
namespace {

constexpr int labelCount = 10'000;
constexpr int dpi = 300;

LabelRow label(int index) {
  LabelRow row;
  const QString digits = u"6921%1"_s.arg(index, 8, 10, QLatin1Char('0'));
  row[LabelField::Code] = digits.mid(6);
  row[LabelField::Barcode] = digits + checkDigitOf(digits);
  row[LabelField::Name] = u"样例商品 %1 号"_s.arg(index);
  row[LabelField::Specification] = u"500ml"_s;
  row[LabelField::Unit] = u"瓶"_s;
  row[LabelField::Price] = QString::number(index * 0.1, 'f', 2);
  return row;
}

LabelJob jobOf(LabelLayout layout, int count) {
  LabelJob job;
  job.layout = std::move(layout);
  job.printer.dpi = dpi;
  job.count = count;
  job.row = label;
  return job;
}

struct PlacedText {
  QRect place;
  QFont font;
  QString text;
};

// The texts of all labels where they stand, for a painter that does not ask whether they fit.
std::vector<std::vector<PlacedText>> textsOf(const LabelJob& job) {
  std::vector<std::vector<PlacedText>> all;
  for (int index = 0; index < job.count; ++index) {
    std::vector<PlacedText> texts;
    const LabelRow row = job.row(index);
    for (const LabelItem& item : job.layout.items) {
      const bool isText = item.kind == LabelItem::Kind::Text;
      QFont font = QApplication::font();
      font.setPixelSize(static_cast<int>(item.size * dpi / 72));
      font.setBold(item.bold);
      const QString text = isText ? item.text(row) : row[LabelField::Barcode];
      const QPointF corner = job.layout.corner(index % job.layout.perSheet());
      if (!text.isEmpty()) texts.push_back({job.printer.dots(item.place.translated(corner)), font, text});
    }
    all.push_back(std::move(texts));
  }
  return all;
}

// The same bars as rectangles that are known before, and the same texts, if any.
void drawAlone(const LabelJob& job, const std::vector<std::vector<QRectF>>& bars,
               const std::vector<std::vector<PlacedText>>& texts, const QString& file) {
  printAtOnce(nullptr, u"bars"_s, {.page = job.page(), .resolution = dpi, .printer = {}, .pdf = file},
              [&](QPrinter& printer, QWidget*) {
                QPainter painter(&printer);
                for (int index = 0; index < job.count; ++index) {
                  const int place = index % job.layout.perSheet();
                  if (index > 0 && place == 0) printer.newPage();
                  const std::vector<QRectF>& code = bars[static_cast<std::size_t>(index)];
                  painter.setPen(Qt::NoPen);
                  painter.setBrush(Qt::black);
                  painter.drawRects(code.data(), static_cast<int>(code.size()));
                  if (texts.empty()) continue;
                  painter.setPen(Qt::black);
                  for (const PlacedText& text : texts[static_cast<std::size_t>(index)]) {
                    painter.setFont(text.font);
                    painter.drawText(text.place.left(), text.place.bottom(), text.text);
                  }
                }
              });
}

std::vector<std::vector<QRectF>> barsOf(const LabelJob& job) {
  const auto item = std::ranges::find(job.layout.items, LabelItem::Kind::BarCode, &LabelItem::kind);
  std::vector<std::vector<QRectF>> all;
  for (int index = 0; index < job.count; ++index) {
    const QRect place =
        job.printer.dots(item->place.translated(job.layout.corner(index % job.layout.perSheet())));
    const BarCode code = barCodeOf(job.row(index)[LabelField::Barcode]);
    const int module = place.width() / code.width();
    double x = place.left() + module * code.quietBefore;
    std::vector<QRectF> bars;
    for (std::size_t run = 0; run < code.runs.size(); ++run) {
      const double width = module * code.runs[run];
      if (run % 2 == 0) bars.emplace_back(x, place.top(), width, place.height());
      x += width;
    }
    all.push_back(std::move(bars));
  }
  return all;
}

// What the process holds now, in megabytes.
double held() {
  QFile status(u"/proc/self/statm"_s);
  if (!status.open(QIODevice::ReadOnly)) return 0;
  constexpr double pagesPerMegabyte = 256;
  return status.readAll().split(' ').value(1).toDouble() / pagesPerMegabyte;
}

}  // namespace

int labelFigures() {
  const QTemporaryDir folder;
  const QString ours = folder.filePath(u"ours.pdf"_s), floor = folder.filePath(u"floor.pdf"_s);
  const LabelLayout sheet = labelLayouts(folder.path()).front().layout;
  LabelLayout barsOnly = sheet;
  std::erase_if(barsOnly.items, [](const LabelItem& item) { return item.kind != LabelItem::Kind::BarCode; });
  for (LabelItem& item : barsOnly.items) item.digits = false;

  const auto print = [&](const LabelJob& job) {
    printLabelJob(nullptr, u"labels"_s, job, {.page = {}, .printer = {}, .pdf = ours});
  };
  const LabelJob alone = jobOf(barsOnly, labelCount), whole = jobOf(sheet, labelCount);
  const std::vector<std::vector<QRectF>> bars = barsOf(alone);
  constexpr int rounds = 3;
  int missed = 0;
  const auto figure = [&](const char* name, const LabelJob& job,
                          const std::vector<std::vector<PlacedText>>& texts, double target) {
    const Pair pair = sideBySide(
        rounds, [&] { print(job); }, [&] { drawAlone(job, bars, texts, floor); });
    missed += !benchmarks::print({name, "ms", pair.ours, pair.floor, target});
  };
  figure("10,000 bar codes to PDF, beside their rectangles alone", alone, {}, 2);
  figure("10,000 labels to PDF, beside their rectangles and texts alone", whole, textsOf(whole), 2);

  print(jobOf(sheet, 1'000));
  const double before = held();
  print(whole);
  missed += !benchmarks::print({"memory that 10,000 labels leave beyond 1,000", "MB", held() - before, 0, 8});
  return missed;
}

}  // namespace goodsbook::benchmarks
