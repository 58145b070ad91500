#include <xlsxwriter.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>

#include "host/sheet/sheet_table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct ListExport {
  Q_DECLARE_TR_FUNCTIONS(ListExport)
};

constexpr qsizetype longestCell = 32'767;
constexpr qsizetype longestSheetName = 31;
constexpr double pixelsPerCharacter = 7;
constexpr qlonglong exactIntegers = 1LL << 53;  // a sheet's numbers are doubles

[[noreturn]] void fail(const QString& path, const QString& why) {
  throw std::runtime_error(
      ListExport::tr("文件 %1 写不进去：%2。请检查磁盘空间，或文件是否正被其他程序打开。")
          .arg(QDir::toNativeSeparators(path), why)
          .toStdString());
}

// A name beside the target, removed again unless it was moved into place.
class Unfinished {
 public:
  explicit Unfinished(const QString& target)
      : target_(target),
        path_(QFileInfo(target).absolutePath() + u"/."_s + QUuid::createUuid().toString(QUuid::Id128) +
              u".part"_s) {}
  ~Unfinished() { QFile::remove(path_); }
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;

  QByteArray encoded() const { return QFile::encodeName(path_); }
  void moveIntoPlace() const {
    std::error_code error;
    std::filesystem::rename(path_.toStdU16String(), target_.toStdU16String(), error);
    if (error) fail(target_, qt_error_string(error.value()));
  }

 private:
  QString target_, path_;
};

QString sheetName(const QString& title, int number) {
  QString name = title.trimmed();
  for (const QChar sign : u"[]:*?/\\'"_s) name.remove(sign);
  if (name.isEmpty()) name = u"Sheet"_s;
  const QString suffix = number == 1 ? QString() : u" (%1)"_s.arg(number);
  return name.left(longestSheetName - suffix.size()) + suffix;
}

QByteArray sheetFormat(FieldType type, const QString& displayFormat) {
  if (type != FieldType::DateTime) return displayFormat.toUtf8();
  return (displayFormat.isEmpty() ? u"yyyy-MM-dd HH:mm:ss"_s : displayFormat).toLower().toUtf8();
}

class Workbook {
 public:
  Workbook(const SheetTable& table, const QString& target) : table_(table), target_(target), file_(target) {
    QByteArray folder = QFile::encodeName(QFileInfo(target).absolutePath());
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = folder.data();
    options.use_zip64 = LXW_TRUE;
    book_.reset(workbook_new_opt(file_.encoded().constData(), &options));
    if (!book_) fail(target_, qt_error_string(errno));
    heading_ = workbook_add_format(book_.get());
    format_set_bold(heading_);
    for (const SheetColumn& column : table_.columns) formats_.push_back(format(column));
  }

  void beginSheet() {
    checkRows();
    sheet_ = workbook_add_worksheet(book_.get(), sheetName(table_.title, ++sheets_).toUtf8().constData());
    if (sheet_ == nullptr) fail(target_, qt_error_string(errno));
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      const auto column = static_cast<lxw_col_t>(i);
      const double width = std::clamp(table_.columns[i].width / pixelsPerCharacter, 4.0, 100.0);
      worksheet_set_column(sheet_, column, column, width, nullptr);
      worksheet_write_string(sheet_, 0, column, table_.columns[i].title.toUtf8().constData(), heading_);
    }
    worksheet_freeze_panes(sheet_, 1, 0);
    next_ = 1;
  }

  void addRow(int row) {
    for (std::size_t i = 0; i < table_.columns.size(); ++i)
      addCell(row, static_cast<lxw_col_t>(i), table_.columns[i], formats_[i]);
    ++next_;
  }

  int rowsInSheet() const { return static_cast<int>(next_) - 1; }

  void finish() {
    checkRows();
    const lxw_error error = workbook_close(book_.release());
    const int cause = errno;
    if (error != LXW_NO_ERROR)
      fail(target_, cause != 0 ? qt_error_string(cause) : QString::fromUtf8(lxw_strerror(error)));
    file_.moveIntoPlace();
  }

 private:
  struct Free {
    void operator()(lxw_workbook* book) const { lxw_workbook_free(book); }
  };

  lxw_format* format(const SheetColumn& column) {
    const FieldType type = table_.rows.field(column.field).type;
    const bool formatted =
        type == FieldType::Integer || type == FieldType::Float || type == FieldType::DateTime;
    const QByteArray text = formatted ? sheetFormat(type, column.format) : QByteArray();
    if (text.isEmpty()) return nullptr;
    lxw_format*& shared = byText_[text];
    if (shared == nullptr) {
      shared = workbook_add_format(book_.get());
      format_set_num_format(shared, text.constData());
    }
    return shared;
  }

  void addText(lxw_col_t column, const QString& text) {
    if (!text.isEmpty())
      worksheet_write_string(sheet_, next_, column, text.left(longestCell).toUtf8().constData(), nullptr);
  }

  void addCell(int row, lxw_col_t at, const SheetColumn& column, lxw_format* format) {
    const QVariant value = table_.rows.valueAt(row, column.field);
    if (value.isNull()) return;
    switch (table_.rows.field(column.field).type) {
      case FieldType::Text:
        addText(at, value.toString());
        break;
      case FieldType::Integer:
        if (std::abs(value.toLongLong()) >= exactIntegers) {
          addText(at, value.toString());
          break;
        }
        [[fallthrough]];
      case FieldType::Float:
        worksheet_write_number(sheet_, next_, at, value.toDouble(), format);
        break;
      case FieldType::Boolean:
        addText(at, cellText(table_, row, column));
        break;
      case FieldType::DateTime:
        addMoment(at, value.toDateTime(), format);
        break;
      case FieldType::Blob:
        break;
    }
  }

  void addMoment(lxw_col_t at, const QDateTime& moment, lxw_format* format) {
    const QDate date = moment.date();
    const QTime time = moment.time();
    if (date.year() < 1900) {  // before a sheet's calendar
      addText(at, moment.toString(u"yyyy-MM-dd HH:mm:ss"_s));
      return;
    }
    lxw_datetime cell{date.year(), date.month(),  date.day(),
                      time.hour(), time.minute(), time.second() + time.msec() / 1000.0};
    worksheet_write_datetime(sheet_, next_, at, &cell, format);
  }

  // Rows go through a file that the library writes unchecked: what it could not write would be missing
  // silently.
  void checkRows() const {
    if (sheet_ == nullptr) return;
    if (std::fflush(sheet_->optimize_tmpfile) != 0 || std::ferror(sheet_->optimize_tmpfile) != 0) {
      fail(target_, qt_error_string(errno));
    }
  }

  const SheetTable& table_;
  QString target_;
  Unfinished file_;
  std::unique_ptr<lxw_workbook, Free> book_;
  std::map<QByteArray, lxw_format*> byText_;
  std::vector<lxw_format*> formats_;
  lxw_format* heading_ = nullptr;
  lxw_worksheet* sheet_ = nullptr;
  lxw_row_t next_ = 0;
  int sheets_ = 0;
};

}  // namespace

void writeXlsx(const SheetTable& table, const QString& path, int rowsPerSheet) {
  Workbook book(table, path);
  book.beginSheet();
  for (int row = 0; row < table.rows.rowCount(); ++row) {
    table.onRow(row);
    if (book.rowsInSheet() == rowsPerSheet) book.beginSheet();
    book.addRow(row);
  }
  book.finish();
}

}  // namespace goodsbook
