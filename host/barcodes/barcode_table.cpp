#include "host/barcodes/barcode_table.h"

#include <QCoreApplication>
#include <QDir>
#include <algorithm>
#include <array>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(BarcodeTable)
};

constexpr qint64 longestLine = 64 * 1024;
constexpr qint64 sampleSize = 1024 * 1024;  // by which the encoding is told
constexpr qsizetype shortestBarcode = 7;    // shorter ones have no key
constexpr qsizetype longestBarcode = 13;

struct Column {
  const char* title;
  qsizetype width;
  QString KnownBarcode::*value;
};
constexpr std::array columns = {
    Column{"条码", longestBarcode, &KnownBarcode::barcode}, Column{"品名", 40, &KnownBarcode::name},
    Column{"规格", 20, &KnownBarcode::specification}, Column{"单位", 6, &KnownBarcode::unit},
    Column{"产地", 18, &KnownBarcode::origin}};

[[noreturn]] void fail(const QFile& file) {
  throw std::runtime_error(Texts::tr("不能读文件 %1：%2")
                               .arg(QDir::toNativeSeparators(file.fileName()), file.errorString())
                               .toStdString());
}

bool isUtf8(const QByteArray& sample) {
  // What is cut off at the end of the sample waits for more bytes and is no error.
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString decoded = decoder(sample);
  return !decoder.hasError();
}

// The values of a line; nothing where a quotation mark does not end.
std::optional<QStringList> split(const QString& line) {
  QStringList values;
  QString value;
  bool quoted = false;
  for (qsizetype i = 0; i < line.size(); ++i) {
    const QChar sign = line[i];
    if (quoted) {
      if (sign != u'"') {
        value += sign;
      } else if (i + 1 < line.size() && line[i + 1] == u'"') {
        value += line[++i];
      } else {
        quoted = false;
      }
    } else if (sign == u'"' && value.trimmed().isEmpty()) {
      quoted = true;
      value.clear();
    } else if (sign == u',') {
      values << value.trimmed();
      value.clear();
    } else {
      value += sign;
    }
  }
  if (quoted) return std::nullopt;
  values << value.trimmed();
  return values;
}

bool isDigit(QChar sign) {
  return sign >= u'0' && sign <= u'9';
}

bool isControl(QChar sign) {
  return sign.category() == QChar::Other_Control || sign == QChar::ReplacementCharacter;
}

QString faultOf(const QStringList& values, const KnownBarcode& known) {
  for (qsizetype i = columns.size(); i < values.size(); ++i) {
    if (!values[i].isEmpty()) return Texts::tr("多出一列：%1").arg(values[i]);
  }
  if (std::ranges::any_of(values, [](const QString& value) { return std::ranges::any_of(value, isControl); }))
    return Texts::tr("有不能显示的字符");
  const bool isBarcode = known.barcode.size() >= shortestBarcode && known.barcode.size() <= longestBarcode &&
                         std::ranges::all_of(known.barcode, isDigit);
  if (!isBarcode) return Texts::tr("条码应为 7 至 13 位数字：%1").arg(known.barcode);
  if (known.name.isEmpty()) return Texts::tr("没有品名");
  for (const Column& column : columns) {
    if ((known.*column.value).size() > column.width)
      return Texts::tr("%1超过 %2 个字：%3")
          .arg(Texts::tr(column.title))
          .arg(column.width)
          .arg(known.*column.value);
  }
  return {};
}

}  // namespace

BarcodeTable::BarcodeTable(const QString& file) : file_(file) {
  if (!file_.open(QIODevice::ReadOnly)) fail(file_);
  const QByteArray sample = file_.peek(sampleSize);
  if (sample.startsWith("\xFF\xFE") || sample.startsWith("\xFE\xFF")) {
    throw std::runtime_error(Texts::tr("文件 %1 是 UTF-16 编码，请另存为 UTF-8 的 CSV 文件")
                                 .arg(QDir::toNativeSeparators(file))
                                 .toStdString());
  }
  decoder_ = isUtf8(sample) ? QStringDecoder(QStringDecoder::Utf8) : QStringDecoder("GB18030");
}

bool BarcodeTable::readLine() {
  line_ = file_.readLine(longestLine);
  if (line_.isEmpty()) {
    if (file_.error() != QFileDevice::NoError) fail(file_);
    return false;
  }
  ++number_;
  tooLong_ = !line_.endsWith('\n') && !file_.atEnd();
  for (QByteArray rest = line_; !rest.isEmpty() && !rest.endsWith('\n');) rest = file_.readLine(longestLine);
  return true;
}

std::optional<BarcodeTable::Line> BarcodeTable::next() {
  while (readLine()) {
    Line line{.number = number_, .known = {}, .fault = {}};
    if (tooLong_) {
      line.fault = Texts::tr("一行太长");
      return line;
    }
    decoder_.resetState();
    const QString text = QString(decoder_(line_)).trimmed();
    if (text.isEmpty()) continue;
    const std::optional<QStringList> values = split(text);
    if (!values) {
      line.fault = Texts::tr("引号没有结束");
      return line;
    }
    if (number_ == 1 && std::ranges::none_of(values->front(), isDigit)) continue;
    for (std::size_t i = 0; i < columns.size() && static_cast<qsizetype>(i) < values->size(); ++i)
      line.known.*columns.at(i).value = values->at(static_cast<qsizetype>(i));
    line.fault =
        decoder_.hasError() ? Texts::tr("编码不对，文件应为 UTF-8 或 GB18030") : faultOf(*values, line.known);
    return line;
  }
  return std::nullopt;
}

int BarcodeTable::percent() const {
  return file_.size() == 0 ? 100 : static_cast<int>(file_.pos() * 100 / file_.size());
}

}  // namespace goodsbook
