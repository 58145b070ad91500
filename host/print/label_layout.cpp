#include "host/print/label_layout.h"

#include <QCoreApplication>
#include <QStringList>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Labels {
  Q_DECLARE_TR_FUNCTIONS(Labels)
};

const std::pair<QString, LabelField> fieldNames[] = {
    {u"编号"_s, LabelField::Code},          {u"条码"_s, LabelField::Barcode},
    {u"名称"_s, LabelField::Name},          {u"规格"_s, LabelField::Specification},
    {u"单位"_s, LabelField::Unit},          {u"售价"_s, LabelField::Price},
    {u"会员价"_s, LabelField::MemberPrice}, {u"产地"_s, LabelField::Origin},
    {u"公司"_s, LabelField::Company}};

std::optional<LabelField> fieldNamed(const QString& name) {
  for (const auto& [known, field] : fieldNames) {
    if (known == name) return field;
  }
  return {};
}

// The words of one line; a text between quotation marks is one word, "#" begins a remark.
struct Words {
  QStringList words;
  bool open = false;  // a quotation mark is missing
};

Words wordsOf(const QString& line) {
  Words result;
  QString word;
  bool started = false;
  const auto end = [&] {
    if (started) result.words << std::exchange(word, {});
    started = false;
  };
  for (const QChar sign : line) {
    const bool mark = sign == u'"' || sign == u'“' || sign == u'”';
    if (mark) {
      result.open = !result.open;
      started = true;
    } else if (result.open) {
      word += sign;
    } else if (sign == u'#') {
      break;
    } else if (sign.isSpace()) {
      end();
    } else {
      word += sign;
      started = true;
    }
  }
  end();
  return result;
}

class Reader {
 public:
  Reader(const QString& text, QString fileName) : fileName_(std::move(fileName)) {
    const QStringList lines = text.split(u'\n');
    for (line_ = 1; line_ <= lines.size(); ++line_) {
      const QString& line = lines[line_ - 1];
      Words found = wordsOf(line_ == 1 && line.startsWith(QChar::ByteOrderMark) ? line.mid(1) : line);
      if (found.open) fail(Labels::tr("少了一个引号"));
      words_ = std::move(found.words);
      if (words_.isEmpty()) continue;
      keyword_ = words_.takeFirst();
      take();
      if (!words_.isEmpty()) fail(Labels::tr("不认识“%1”").arg(words_.first()));
    }
    --line_;
    check();
  }

  LabelLayout layout() && { return std::move(layout_); }

 private:
  [[noreturn]] void fail(const QString& what, int line = 0) const {
    throw std::runtime_error(Labels::tr("标签样式 %1 第 %2 行：%3。")
                                 .arg(fileName_)
                                 .arg(line > 0 ? line : line_)
                                 .arg(what)
                                 .toStdString());
  }

  // What a layout has one of stands in one line.
  void once() {
    const auto [first, isNew] = lines_.try_emplace(keyword_, line_);
    if (!isNew) fail(Labels::tr("“%1”已写在第 %2 行").arg(keyword_).arg(first->second));
  }

  void take() {
    static const QStringList single{u"名称"_s, u"纸张"_s, u"标签"_s, u"列数"_s,
                                    u"行数"_s, u"边距"_s, u"间距"_s};
    if (single.contains(keyword_)) once();
    if (keyword_ == u"名称"_s) {
      layout_.name = word();
    } else if (keyword_ == u"纸张"_s) {
      layout_.paper = paper();
    } else if (keyword_ == u"标签"_s) {
      layout_.label = size();
    } else if (keyword_ == u"列数"_s) {
      layout_.columns = whole();
    } else if (keyword_ == u"行数"_s) {
      layout_.rows = whole();
    } else if (keyword_ == u"边距"_s) {
      layout_.margin = point();
    } else if (keyword_ == u"间距"_s) {
      layout_.gap = point();
    } else if (keyword_ == u"文字"_s) {
      LabelItem item = placed(LabelItem::Kind::Text);
      item.pattern = word();
      checkPattern(item.pattern);
      options(item);
      layout_.items.push_back(std::move(item));
    } else if (keyword_ == u"条码"_s) {
      LabelItem item = placed(LabelItem::Kind::BarCode);
      item.alignment = Qt::AlignHCenter;
      options(item);
      layout_.items.push_back(std::move(item));
    } else if (keyword_ == u"线"_s) {
      layout_.items.push_back(placed(LabelItem::Kind::Line));
    } else {
      fail(Labels::tr("不认识“%1”，可用：名称、纸张、标签、列数、行数、边距、间距、文字、条码、线")
               .arg(keyword_));
    }
  }

  QString word() {
    if (words_.isEmpty()) fail(Labels::tr("“%1”后面缺少内容").arg(keyword_));
    return words_.takeFirst();
  }

  double number(double least) {
    const QString text = word();
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok) fail(Labels::tr("“%1”后面应是数字，现在是“%2”").arg(keyword_, text));
    constexpr double most = 2000;
    if (value < least || value > most) fail(Labels::tr("数字 %1 超出范围").arg(text));
    return value;
  }

  int whole() {
    const double value = number(1);
    if (value != static_cast<int>(value)) fail(Labels::tr("“%1”后面应是整数").arg(keyword_));
    return static_cast<int>(value);
  }

  QPointF point() {
    const double x = number(0);
    return {x, number(0)};
  }

  QSizeF size() {
    constexpr double least = 0.05;
    const double width = number(least);
    return {width, number(least)};
  }

  QSizeF paper() {
    if (!words_.isEmpty()) {
      const QString name = words_.first().toUpper();
      if (name == "A4"_L1) return words_.removeFirst(), QSizeF(210, 297);
      if (name == "A5"_L1) return words_.removeFirst(), QSizeF(148, 210);
    }
    return size();
  }

  LabelItem placed(LabelItem::Kind kind) {
    LabelItem item;
    item.kind = kind;
    item.line = line_;
    const QPointF corner = point();
    item.place = QRectF(corner, size());
    return item;
  }

  void checkPattern(const QString& pattern) const {
    for (qsizetype at = pattern.indexOf(u'{'); at >= 0; at = pattern.indexOf(u'{', at + 1)) {
      const qsizetype behind = pattern.indexOf(u'}', at);
      if (behind < 0) fail(Labels::tr("“{”后面少了“}”"));
      const QString name = pattern.mid(at + 1, behind - at - 1);
      if (fieldNamed(name)) continue;
      QStringList known;
      for (const auto& each : fieldNames) known << each.first;
      fail(Labels::tr("没有“%1”这个内容，可用：%2").arg(name, known.join(u'、')));
    }
  }

  void options(LabelItem& item) {
    while (!words_.isEmpty()) {
      keyword_ = words_.takeFirst();
      if (keyword_ == u"字号"_s) {
        item.size = number(1);
        item.least = std::min(item.least, item.size);
      } else if (keyword_ == u"最小字号"_s) {
        item.least = number(1);
      } else if (keyword_ == u"粗体"_s) {
        item.bold = true;
      } else if (keyword_ == u"无数字"_s && item.kind == LabelItem::Kind::BarCode) {
        item.digits = false;
      } else if (keyword_ == u"居左"_s) {
        align(item, Qt::AlignLeft);
      } else if (keyword_ == u"居中"_s) {
        align(item, Qt::AlignHCenter);
      } else if (keyword_ == u"居右"_s) {
        align(item, Qt::AlignRight);
      } else {
        fail(Labels::tr("不认识“%1”，可用：字号、最小字号、粗体、居左、居中、居右，条码还有无数字")
                 .arg(keyword_));
      }
    }
    if (item.least > item.size) fail(Labels::tr("最小字号大于字号"));
  }

  static void align(LabelItem& item, Qt::AlignmentFlag across) {
    item.alignment = (item.alignment & Qt::AlignVertical_Mask) | across;
  }

  void check() const {
    if (layout_.name.isEmpty()) fail(Labels::tr("缺少“名称”"));
    if (layout_.paper.isEmpty()) fail(Labels::tr("缺少“纸张”"));
    if (layout_.label.isEmpty()) fail(Labels::tr("缺少“标签”"));
    if (layout_.items.empty()) fail(Labels::tr("标签上没有内容：缺少“文字”或“条码”"));
    constexpr double hair = 0.01;
    const QPointF last = layout_.corner(layout_.perSheet() - 1);
    const double right = last.x() + layout_.label.width(), bottom = last.y() + layout_.label.height();
    if (right > layout_.paper.width() + hair)
      fail(Labels::tr("标签共宽 %1 毫米，纸宽只有 %2 毫米").arg(right).arg(layout_.paper.width()),
           lines_.at(u"标签"_s));
    if (bottom > layout_.paper.height() + hair)
      fail(Labels::tr("标签共高 %1 毫米，纸高只有 %2 毫米").arg(bottom).arg(layout_.paper.height()),
           lines_.at(u"标签"_s));
    for (const LabelItem& item : layout_.items) {
      const bool inside = item.place.right() <= layout_.label.width() + hair &&
                          item.place.bottom() <= layout_.label.height() + hair;
      if (!inside)
        fail(
            Labels::tr("内容超出标签（%1 × %2 毫米）").arg(layout_.label.width()).arg(layout_.label.height()),
            item.line);
      checkQuiet(item);
    }
  }

  // Whatever stands beside the bars makes them unreadable.
  void checkQuiet(const LabelItem& code) const {
    if (code.kind != LabelItem::Kind::BarCode) return;
    for (const LabelItem& other : layout_.items) {
      if (&other != &code && other.place.intersects(code.place))
        fail(Labels::tr("内容与第 %1 行的条码重叠").arg(code.line), other.line);
    }
  }

  QString fileName_, keyword_;
  QStringList words_;
  int line_ = 0;
  std::map<QString, int> lines_;  // by keyword, of those that stand once
  LabelLayout layout_;
};

}  // namespace

QString LabelItem::text(const LabelRow& row) const {
  QString filled;
  bool named = false, any = false;
  qsizetype from = 0;
  for (qsizetype at = pattern.indexOf(u'{'); at >= 0; at = pattern.indexOf(u'{', from)) {
    const qsizetype behind = pattern.indexOf(u'}', at);
    const QString& value = row[*fieldNamed(pattern.mid(at + 1, behind - at - 1))];
    named = true;
    any |= !value.trimmed().isEmpty();
    filled += QStringView(pattern).mid(from, at - from);
    filled += value;
    from = behind + 1;
  }
  if (named && !any) return {};
  filled += QStringView(pattern).mid(from);
  return filled.trimmed();
}

LabelLayout readLabelLayout(const QString& text, const QString& fileName) {
  return Reader(text, fileName).layout();
}

}  // namespace goodsbook
