// Texts of rows: separated by commas, semicolons or tabs, with quotes where needed.

#include <array>

#include "host/sheet/csv_text.h"
#include "host/sheet/sheet_errors.h"
#include "host/sheet/sheet_formats.h"

using namespace Qt::StringLiterals;

namespace goodsbook::sheet {
namespace {

constexpr qsizetype longestCell = 1 << 20;  // longer: a quote that was never closed
constexpr int charactersBetweenPauses = 100'000;
constexpr char16_t atEnd = 0xFFFF;

class CsvRows : public SheetRows {
 public:
  CsvRows(const QString& path, const SheetOptions& options, char16_t separator, bool namesSeparator)
      : path_(path), options_(options), text_(path, options.pause), separator_(separator) {
    if (namesSeparator) skipLine();
  }

  bool next(SheetRow& row) override {
    if (text_.peek() == atEnd) return false;
    row.number = ++number_;
    row.cells.assign(static_cast<std::size_t>(options_.columns), QString());
    std::size_t column = 0;
    for (bool more = true; more; ++column) {
      const QString cell = readCell(more);
      if (column < row.cells.size()) row.cells[column] = cell;
    }
    return true;
  }

 private:
  void skipLine() {
    for (char16_t sign = text_.next(); sign != u'\n' && sign != atEnd;) sign = text_.next();
  }

  // `more`: a separator follows, not the line's end.
  QString readCell(bool& more) {
    QString cell;
    // ="00123" keeps spreadsheet programs from making a number of it.
    bool formula = false;
    if (text_.peek() == u'=') {
      text_.next();
      formula = text_.peek() == u'"';
      if (!formula) cell += u'=';
    }
    bool quoted = false;
    if (text_.peek() == u'"') {
      text_.next();
      quoted = true;
    }
    for (;;) {
      const char16_t sign = text_.next();
      if (++count_ % charactersBetweenPauses == 0) options_.pause();
      if (sign == atEnd) {
        more = false;
        return cell;
      }
      if (quoted) {
        if (sign != u'"') {
          cell += QChar(sign);
        } else if (text_.peek() == u'"') {
          cell += QChar(text_.next());
        } else {
          quoted = false;
        }
      } else if (sign == separator_) {
        more = true;
        return cell;
      } else if (sign == u'\n' || sign == u'\r') {
        if (sign == u'\r' && text_.peek() == u'\n') text_.next();
        more = false;
        return cell;
      } else {
        cell += QChar(sign);
      }
      if (cell.size() > longestCell) failDamaged(path_);
    }
  }

  QString path_;
  SheetOptions options_;
  CsvText text_;
  char16_t separator_;
  int number_ = 0;
  int count_ = 0;
};

class CsvBook : public SheetBook {
 public:
  CsvBook(const QString& path, SheetOptions options) : path_(path), options_(std::move(options)) { look(); }

  QStringList sheets() const override { return {u"CSV"_s}; }
  std::unique_ptr<SheetRows> rows(int) const override {
    return std::make_unique<CsvRows>(path_, options_, separator_, namesSeparator_);
  }

 private:
  // The separator is what stands most often in the first line, or what a line "sep=;" names.
  void look() {
    constexpr qsizetype longestLook = 1 << 16;
    CsvText text(path_, options_.pause);
    QString line;
    bool quoted = false;
    for (char16_t sign = text.next(); sign != atEnd && line.size() < longestLook; sign = text.next()) {
      if (sign == u'"') quoted = !quoted;
      if (!quoted && (sign == u'\n' || sign == u'\r')) break;
      if (!quoted) line += QChar(sign);
    }
    if (line.startsWith("sep="_L1, Qt::CaseInsensitive) && line.size() == 5) {
      separator_ = line.at(4).unicode();
      namesSeparator_ = true;
      return;
    }
    qsizetype most = 0;
    for (const char16_t candidate : std::array{u',', u'\t', u';'}) {
      const qsizetype count = line.count(QChar(candidate));
      if (count <= most) continue;
      most = count;
      separator_ = candidate;
    }
  }

  QString path_;
  SheetOptions options_;
  char16_t separator_ = u',';
  bool namesSeparator_ = false;
};

}  // namespace

bool looksLikeText(const QByteArray& head) {
  if (head.startsWith("\xFF\xFE") || head.startsWith("\xFE\xFF")) return true;
  for (const char sign : head) {
    const auto code = static_cast<unsigned char>(sign);
    if (code < 0x20 && code != '\n' && code != '\r' && code != '\t' && code != '\f') return false;
  }
  return true;
}

std::unique_ptr<SheetBook> openCsv(const QString& path, const SheetOptions& options) {
  return std::make_unique<CsvBook>(path, options);
}

}  // namespace goodsbook::sheet
