// Workbooks of the kind .xlsx: markup in a zip archive.

#include <QDateTime>
#include <map>
#include <optional>

#include "host/sheet/number_format.h"
#include "host/sheet/sheet_errors.h"
#include "host/sheet/sheet_formats.h"
#include "host/sheet/sheet_xml.h"
#include "host/sheet/xlsx_strings.h"

using namespace Qt::StringLiterals;

namespace goodsbook::sheet {
namespace {

constexpr int mostRows = 1'048'576;
constexpr int mostColumns = 16'384;
constexpr std::size_t mostFormats = 65'536;
constexpr int mostStringPacking = 64;  // each text stands there once: they pack less than cells

struct Sheet {
  QString name, file;
};

class XlsxBook : public SheetBook {
 public:
  XlsxBook(const QString& path, SheetOptions options) : archive_(path), options_(std::move(options)) {
    readWorkbook();
    readStyles();
    const QString strings = u"xl/sharedStrings.xml"_s;
    if (archive_.has(strings)) {
      SheetXml markup = xml(strings, mostStringPacking);
      strings_.read(markup, path);
    }
  }

  QStringList sheets() const override {
    QStringList names;
    for (const Sheet& sheet : sheets_) names << sheet.name;
    return names;
  }
  std::unique_ptr<SheetRows> rows(int sheet) const override;

  SheetXml xml(const QString& file, int mostPacking = ZipArchive::usualPacking) const {
    return {archive_.open(file, mostPacking), archive_.path(), options_.pause};
  }
  const QString& path() const { return archive_.path(); }
  int columns() const { return std::min(options_.columns, mostColumns); }
  bool since1904() const { return since1904_; }
  const SharedStrings& strings() const { return strings_; }
  const NumberFormat& format(std::size_t style) const {
    static const NumberFormat general;
    return style < styles_.size() ? formats_[styles_[style]] : general;
  }

 private:
  void readWorkbook() {
    struct Named {
      QString name, relation;
    };
    std::vector<Named> named;
    SheetXml book = xml(u"xl/workbook.xml"_s);
    while (book.next()) {
      if (book.starts("workbookPr"_L1)) {
        const QString since = book.attribute("date1904"_L1);
        since1904_ = since == "1"_L1 || since == "true"_L1;
      } else if (book.starts("sheet"_L1)) {
        named.push_back({book.attribute("name"_L1), book.attribute("id"_L1)});
      }
    }
    std::map<QString, QString> files;
    SheetXml relations = xml(u"xl/_rels/workbook.xml.rels"_s);
    while (relations.next()) {
      if (!relations.starts("Relationship"_L1) || !relations.attribute("Type"_L1).endsWith("/worksheet"_L1))
        continue;
      const QString target = relations.attribute("Target"_L1);
      files[relations.attribute("Id"_L1)] = target.startsWith(u'/') ? target.mid(1) : u"xl/"_s + target;
    }
    for (const Named& sheet : named) {
      if (const auto file = files.find(sheet.relation); file != files.end())
        sheets_.push_back({sheet.name, file->second});
    }
    if (sheets_.empty()) failDamaged(path());
  }

  void readStyles() {
    formats_.emplace_back();
    const QString file = u"xl/styles.xml"_s;
    if (!archive_.has(file)) return;
    std::map<int, QString> codes;
    std::map<int, std::size_t> known;
    bool inCells = false;
    SheetXml styles = xml(file);
    while (styles.next()) {
      if (styles.starts("numFmt"_L1))
        codes[styles.attribute("numFmtId"_L1).toInt()] = styles.attribute("formatCode"_L1);
      if (styles.starts("cellXfs"_L1)) inCells = true;
      if (styles.ends("cellXfs"_L1)) inCells = false;
      if (!inCells || !styles.starts("xf"_L1)) continue;
      const int number = styles.attribute("numFmtId"_L1).toInt();
      const auto [place, isNew] = known.try_emplace(number, formats_.size());
      if (isNew) {
        const auto code = codes.find(number);
        formats_.emplace_back(code != codes.end() ? code->second : builtinNumberFormat(number));
      }
      styles_.push_back(place->second);
      if (styles_.size() > mostFormats) failDamaged(path());
    }
  }

  ZipArchive archive_;
  SheetOptions options_;
  std::vector<Sheet> sheets_;
  bool since1904_ = false;
  std::vector<NumberFormat> formats_;
  std::vector<std::size_t> styles_;  // place in formats_
  SharedStrings strings_;
};

// "AB12" → column 28; 0 where there is none.
int columnOf(QStringView reference) {
  int column = 0;
  for (const QChar sign : reference) {
    const char16_t letter = sign.toUpper().unicode();
    if (letter < u'A' || letter > u'Z') break;
    column = column * 26 + (letter - u'A' + 1);
    if (column > mostColumns) return mostColumns;
  }
  return column;
}

class XlsxRows : public SheetRows {
 public:
  XlsxRows(const XlsxBook& book, const QString& file) : book_(book), xml_(book.xml(file)) {}

  bool next(SheetRow& row) override {
    while (!atEnd_ && xml_.next()) {
      if (xml_.starts("row"_L1)) {
        readRow(row);
        return true;
      }
      atEnd_ = xml_.ends("sheetData"_L1);
    }
    atEnd_ = true;
    return false;
  }

 private:
  void readRow(SheetRow& row) {
    bool isNumber = false;
    const int given = xml_.attribute("r"_L1).toInt(&isNumber);
    number_ = isNumber ? given : number_ + 1;
    if (number_ < 1 || number_ > mostRows) failDamaged(book_.path());
    row.number = number_;
    row.cells.assign(static_cast<std::size_t>(book_.columns()), QString());
    int column = 0;
    while (xml_.next() && !xml_.ends("row"_L1)) {
      if (!xml_.starts("c"_L1)) continue;
      const int named = columnOf(xml_.attribute("r"_L1));
      column = named > 0 ? named : column + 1;
      if (column <= book_.columns()) row.cells[static_cast<std::size_t>(column - 1)] = readCell();
    }
  }

  QString readCell() {
    const QString type = xml_.attribute("t"_L1);
    const auto style = static_cast<std::size_t>(xml_.attribute("s"_L1).toUInt());
    QString value, inside;
    bool inValue = false;
    while (xml_.next() && !xml_.ends("c"_L1)) {
      if (xml_.starts("is"_L1)) inside = richText(xml_, "is"_L1);
      if (xml_.starts("v"_L1)) inValue = true;
      if (xml_.ends("v"_L1)) inValue = false;
      if (inValue && xml_.isText()) value += xml_.text();
    }
    const NumberFormat& format = book_.format(style);
    if (type == "inlineStr"_L1) return format.text(inside);
    if (value.isEmpty()) return {};
    if (type == "s"_L1) return format.text(book_.strings().at(value.toLongLong()));
    if (type == "str"_L1) return format.text(value);
    if (type == "b"_L1) return value == "1"_L1 ? u"TRUE"_s : u"FALSE"_s;
    if (type == "e"_L1) return value;
    if (type == "d"_L1) return moment(format, value);
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? format.number(number, book_.since1904()) : value;
  }

  QString moment(const NumberFormat& format, const QString& written) const {
    const QDateTime time = QDateTime::fromString(written, Qt::ISODateWithMs);
    if (!time.isValid()) return written;
    const QDate start = book_.since1904() ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
    constexpr double msPerDay = 86'400'000;
    return format.number(
        static_cast<double>(start.daysTo(time.date())) + time.time().msecsSinceStartOfDay() / msPerDay,
        book_.since1904());
  }

  const XlsxBook& book_;
  SheetXml xml_;
  int number_ = 0;
  bool atEnd_ = false;
};

std::unique_ptr<SheetRows> XlsxBook::rows(int sheet) const {
  return std::make_unique<XlsxRows>(*this, sheets_.at(static_cast<std::size_t>(sheet)).file);
}

}  // namespace

std::unique_ptr<SheetBook> openXlsx(const QString& path, const SheetOptions& options) {
  return std::make_unique<XlsxBook>(path, options);
}

}  // namespace goodsbook::sheet
