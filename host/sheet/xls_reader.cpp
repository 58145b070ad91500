// Workbooks of the kind .xls: records in a stream of a compound file, as written from 1993 on. Read by hand
// because the library for them tells no number formats, and a price is what its format shows.

#include <QFile>
#include <algorithm>
#include <map>

#include "host/sheet/biff_records.h"
#include "host/sheet/compound_file.h"
#include "host/sheet/number_format.h"
#include "host/sheet/sheet_errors.h"
#include "host/sheet/sheet_formats.h"

using namespace Qt::StringLiterals;

namespace goodsbook::sheet {
namespace {

constexpr qint64 biggestFile = 256LL << 20;
constexpr int recordsBetweenPauses = 4000;

namespace record {
constexpr quint16 formula = 0x06, end = 0x0A, dates = 0x22, password = 0x2F, codePage = 0x42, sheet = 0x85,
                  manyNumbers = 0xBD, richText = 0xD6, cellFormat = 0xE0, texts = 0xFC, sharedText = 0xFD,
                  number = 0x203, text = 0x204, flag = 0x205, formulaText = 0x207, shortNumber = 0x27E,
                  format = 0x41E, begin = 0x809;
}  // namespace record

QByteArray workbookStream(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) failUnreadable(path, file.errorString());
  if (file.size() > biggestFile) failTooBig(path);
  const CompoundFile parts(file.readAll(), path);
  if (parts.has(u"EncryptedPackage"_s)) failPassword(path);
  for (const QString& name : {u"Workbook"_s, u"Book"_s}) {
    if (QByteArray stream = parts.stream(name); !stream.isEmpty()) return stream;
  }
  failNoSheet(path);
}

// A number in four bytes: an integer or the upper half of a double, perhaps in hundredths.
double shortNumber(quint32 bits) {
  constexpr quint32 hundredths = 1, integer = 2;
  double value = 0;
  if ((bits & integer) != 0) {
    value = static_cast<qint32>(bits) >> 2;
  } else {
    const quint64 wide = quint64{bits & ~3U} << 32;
    memcpy(&value, &wide, sizeof value);
  }
  return (bits & hundredths) != 0 ? value / 100 : value;
}

QString errorText(quint8 code) {
  static const std::map<quint8, QString> texts{
      {0x00, u"#NULL!"_s}, {0x07, u"#DIV/0!"_s}, {0x0F, u"#VALUE!"_s}, {0x17, u"#REF!"_s},
      {0x1D, u"#NAME?"_s}, {0x24, u"#NUM!"_s},   {0x2A, u"#N/A"_s}};
  const auto text = texts.find(code);
  return text == texts.end() ? u"#N/A"_s : text->second;
}

struct Sheet {
  QString name;
  qsizetype start;
};

class XlsBook : public SheetBook {
 public:
  XlsBook(const QString& path, SheetOptions options)
      : path_(path), options_(std::move(options)), stream_(workbookStream(path)) {
    readGlobals();
    if (sheets_.empty()) failDamaged(path_);
  }

  QStringList sheets() const override {
    QStringList names;
    for (const Sheet& sheet : sheets_) names << sheet.name;
    return names;
  }
  std::unique_ptr<SheetRows> rows(int sheet) const override;

  const QByteArray& stream() const { return stream_; }
  const QString& path() const { return path_; }
  const SheetOptions& options() const { return options_; }
  bool since1904() const { return since1904_; }
  QString sharedText(quint32 index) const {
    return index < texts_.size() ? QString::fromUtf8(texts_[index]) : QString();
  }
  const NumberFormat& format(quint16 style) const {
    static const NumberFormat general;
    return style < styles_.size() ? formats_[styles_[style]] : general;
  }
  // A text in a record of its own.
  QString text(const BiffRecords& records, qsizetype offset, bool shortLength = false) const {
    if (wide_) return BiffText(records.withContinuations(offset)).text(shortLength);
    const qsizetype length = shortLength ? records.byte(offset) : records.word(offset);
    const qsizetype start = offset + (shortLength ? 1 : 2);
    const QByteArrayView body = records.body();
    if (start >= body.size()) return {};
    return fromCodePage(body.sliced(start, std::min(length, body.size() - start)), codePage_);
  }

 private:
  void readGlobals() {
    constexpr quint16 since1997 = 0x600;
    BiffRecords records(stream_);
    if (!records.next() || records.type() != record::begin) failDamaged(path_);
    wide_ = records.word(0) >= since1997;
    std::map<int, QString> codes;
    std::vector<int> numbers;
    while (records.next() && records.type() != record::end) {
      switch (records.type()) {
        case record::password:
          failPassword(path_);
        case record::dates:
          since1904_ = records.word(0) == 1;
          break;
        case record::codePage:
          codePage_ = records.word(0);
          break;
        case record::format:
          codes[records.word(0)] = text(records, 2, !wide_);
          break;
        case record::cellFormat:
          numbers.push_back(records.word(2));
          break;
        case record::sheet: {
          constexpr quint8 ofCells = 0;
          if (records.byte(5) == ofCells)
            sheets_.push_back({text(records, 6, true), static_cast<qsizetype>(records.number(0))});
          break;
        }
        case record::texts:
          readTexts(records);
          break;
        default:
          break;
      }
    }
    if (records.type() != record::end) failDamaged(path_);
    readStyles(codes, numbers);
  }

  void readTexts(const BiffRecords& records) {
    BiffText all(records.withContinuations(4));
    const quint32 count = all.number();
    for (quint32 i = 0; i < count && !all.atEnd(); ++i) {
      if (i % recordsBetweenPauses == 0) options_.pause();
      texts_.push_back(all.text().toUtf8());
    }
  }

  void readStyles(const std::map<int, QString>& codes, const std::vector<int>& numbers) {
    std::map<int, std::size_t> known;
    for (const int number : numbers) {
      const auto [place, isNew] = known.try_emplace(number, formats_.size());
      if (isNew) {
        const auto code = codes.find(number);
        formats_.emplace_back(code != codes.end() ? code->second : builtinNumberFormat(number));
      }
      styles_.push_back(place->second);
    }
  }

  QString path_;
  SheetOptions options_;
  QByteArray stream_;
  bool wide_ = true;  // texts in UTF-16, not in a code page
  int codePage_ = 936;
  bool since1904_ = false;
  std::vector<Sheet> sheets_;
  std::vector<QByteArray> texts_;
  std::vector<NumberFormat> formats_;
  std::vector<std::size_t> styles_;
};

// Where a cell's record begins; the value is taken out when its row is asked for.
struct Cell {
  quint16 row, column;
  quint32 position;
  auto operator<=>(const Cell&) const = default;
};

class XlsRows : public SheetRows {
 public:
  XlsRows(const XlsBook& book, qsizetype start) : book_(book) {
    findCells(start);
    // Programs write rows in order; nothing makes them.
    if (!std::ranges::is_sorted(cells_)) std::ranges::sort(cells_);
  }

  bool next(SheetRow& row) override {
    if (next_ >= cells_.size()) return false;
    const quint16 number = cells_[next_].row;
    row.number = number + 1;
    row.cells.assign(static_cast<std::size_t>(book_.options().columns), QString());
    for (; next_ < cells_.size() && cells_[next_].row == number; ++next_)
      row.cells[cells_[next_].column] = cellText(cells_[next_]);
    if (++sincePause_ % recordsBetweenPauses == 0) book_.options().pause();
    return true;
  }

 private:
  void findCells(qsizetype start) {
    BiffRecords records(book_.stream(), start);
    if (!records.next() || records.type() != record::begin) failDamaged(book_.path());
    int depth = 1;  // charts are streams inside the sheet's
    for (int count = 0; depth > 0 && records.next(); ++count) {
      if (count % recordsBetweenPauses == 0) book_.options().pause();
      if (records.type() == record::begin) ++depth;
      if (records.type() == record::end) --depth;
      if (depth == 1) noteCell(records);
    }
    if (depth > 0) failDamaged(book_.path());
  }

  void noteCell(const BiffRecords& records) {
    switch (records.type()) {
      case record::manyNumbers: {
        const quint16 first = records.word(2);
        const qsizetype count = (records.body().size() - 6) / 6;
        for (qsizetype i = 0; i < count; ++i) addCell(records, static_cast<quint16>(first + i));
        break;
      }
      case record::formula:
      case record::richText:
      case record::sharedText:
      case record::number:
      case record::text:
      case record::flag:
      case record::shortNumber:
        addCell(records, records.word(2));
        break;
      default:
        break;
    }
  }

  void addCell(const BiffRecords& records, quint16 column) {
    if (column < book_.options().columns)
      cells_.push_back({records.word(0), column, static_cast<quint32>(records.position())});
  }

  QString cellText(const Cell& cell) const {
    BiffRecords records(book_.stream(), cell.position);
    records.next();
    const bool many = records.type() == record::manyNumbers;
    const qsizetype inMany = many ? 4 + qsizetype{6} * (cell.column - records.word(2)) : 4;
    const NumberFormat& format = book_.format(records.word(inMany));
    const auto number = [&](double value) { return format.number(value, book_.since1904()); };
    switch (records.type()) {
      case record::manyNumbers:
        return number(shortNumber(records.number(inMany + 2)));
      case record::shortNumber:
        return number(shortNumber(records.number(6)));
      case record::number:
        return number(records.real(6));
      case record::sharedText:
        return format.text(book_.sharedText(records.number(6)));
      case record::text:
      case record::richText:
        return format.text(book_.text(records, 6));
      case record::flag:
        return flagText(records.byte(6), records.byte(7) != 0);
      default:
        return formulaText(records, format);
    }
  }

  static QString flagText(quint8 value, bool isError) {
    if (isError) return errorText(value);
    return value != 0 ? u"TRUE"_s : u"FALSE"_s;
  }

  // The result that was calculated last.
  QString formulaText(BiffRecords& records, const NumberFormat& format) const {
    constexpr quint16 noNumber = 0xFFFF;
    if (records.word(12) != noNumber) return format.number(records.real(6), book_.since1904());
    enum Kind : quint8 { Text = 0, Flag = 1, Error = 2 };
    switch (records.byte(6)) {
      case Flag:
        return flagText(records.byte(8), false);
      case Error:
        return errorText(records.byte(8));
      case Text:
        // Between formula and text may stand what the formula shares with others.
        for (int i = 0; i < 4 && records.next(); ++i) {
          if (records.type() == record::formulaText) return format.text(book_.text(records, 0));
        }
        return {};
      default:
        return {};
    }
  }

  const XlsBook& book_;
  std::vector<Cell> cells_;
  std::size_t next_ = 0;
  int sincePause_ = 0;
};

std::unique_ptr<SheetRows> XlsBook::rows(int sheet) const {
  return std::make_unique<XlsRows>(*this, sheets_.at(static_cast<std::size_t>(sheet)).start);
}

}  // namespace

std::unique_ptr<SheetBook> openXls(const QString& path, const SheetOptions& options) {
  return std::make_unique<XlsBook>(path, options);
}

}  // namespace goodsbook::sheet
