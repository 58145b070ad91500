#include "host/print/label_check.h"

#include <QCoreApplication>
#include <QPainter>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Labels {
  Q_DECLARE_TR_FUNCTIONS(Labels)
};

// How far something reaches over the four edges, in millimetres.
struct Overhang {
  double left = 0, top = 0, right = 0, bottom = 0;

  bool isSeen() const {
    constexpr double hair = 0.1;
    return std::max({left, top, right, bottom}) > hair;
  }
  void widen(const Overhang& other) {
    left = std::max(left, other.left);
    top = std::max(top, other.top);
    right = std::max(right, other.right);
    bottom = std::max(bottom, other.bottom);
  }
  QString text() const {
    QStringList edges;
    const std::pair<QString, double> all[] = {{Labels::tr("左边"), left},
                                              {Labels::tr("上边"), top},
                                              {Labels::tr("右边"), right},
                                              {Labels::tr("下边"), bottom}};
    for (const auto& [edge, by] : all) {
      if (by > 0) edges << Labels::tr("%1 %2 毫米").arg(edge).arg(by, 0, 'f', 1);
    }
    return edges.join(u'、');
  }
};

Overhang overhangAt(const LabelJob& job, const QRectF& content, int place) {
  const QPointF &scale = job.printer.scale, &offset = job.printer.offset;
  const QRectF there = content.translated(job.layout.corner(place));
  return {.left = -(there.left() * scale.x() + offset.x()),
          .top = -(there.top() * scale.y() + offset.y()),
          .right = there.right() * scale.x() + offset.x() - job.layout.paper.width(),
          .bottom = there.bottom() * scale.y() + offset.y() - job.layout.paper.height()};
}

// Labels that come to lie on one place of the sheets.
int labelsAt(const LabelJob& job, int place) {
  const int sheet = job.layout.perSheet();
  const int first = (place - job.firstPlace + sheet) % sheet;
  return first < job.count ? (job.count - first - 1) / sheet + 1 : 0;
}

// "2–3、5" for the numbers 2, 3, 5.
QString ranges(const std::vector<int>& numbers) {
  QStringList parts;
  for (std::size_t from = 0, to = 0; from < numbers.size(); from = ++to) {
    while (to + 1 < numbers.size() && numbers[to + 1] == numbers[to] + 1) ++to;
    parts << (from == to ? QString::number(numbers[from]) : u"%1–%2"_s.arg(numbers[from]).arg(numbers[to]));
  }
  return parts.join(u'、');
}

}  // namespace

void tellOffPaper(const LabelJob& job, LabelWarnings& warnings) {
  QRectF content;
  for (const LabelItem& item : job.layout.items) content = content.united(item.place);
  Overhang most;
  std::vector<int> places;
  int count = 0;
  for (int place = 0; place < job.layout.perSheet(); ++place) {
    const int labels = labelsAt(job, place);
    const Overhang over = overhangAt(job, content, place);
    if (labels == 0 || !over.isSeen()) continue;
    most.widen(over);
    places.push_back(place + 1);
    count += labels;
  }
  if (places.empty()) return;
  const QString which = job.layout.perSheet() > 1 ? Labels::tr("纸上第 %1 个位置的标签").arg(ranges(places))
                                                  : Labels::tr("标签");
  warnings.add(
      Labels::tr("%1超出纸边（%2），%3 个标签印不全：请改小偏移或缩放").arg(which, most.text()).arg(count));
}

LabelCheck::LabelCheck(LabelJob job)
    : job_(std::move(job)), labels_(job_.layout, job_.printer), aside_(1, 1, QImage::Format_Grayscale8) {
  tellOffPaper(job_, warnings_);
}

void LabelCheck::goOn() {
  constexpr int slice = 200;
  const int end = std::min(job_.count, next_ + slice);
  QPainter painter(&aside_);
  for (; next_ < end; ++next_) {
    LabelRow row = job_.row(next_);
    if (next_ > 0 && row == last_) continue;  // a copy
    labels_.paint(painter, {}, row, warnings_);
    last_ = std::move(row);
  }
}

}  // namespace goodsbook
