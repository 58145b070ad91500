#include "host/sheet/sheet_reader.h"

#include <QFile>
#include <QFileInfo>

#include "host/sheet/compound_file.h"
#include "host/sheet/sheet_errors.h"
#include "host/sheet/sheet_formats.h"
#include "host/sheet/zip_archive.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr qint64 headSize = 4096;

QByteArray headOf(const QString& path) {
  if (QFileInfo(path).isDir()) sheet::failNoSheet(path);
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) sheet::failUnreadable(path, file.errorString());
  QByteArray head = file.read(headSize);
  if (file.error() != QFile::NoError) sheet::failUnreadable(path, file.errorString());
  if (head.isEmpty()) sheet::failEmpty(path);
  return head;
}

bool endsWithOneOf(const QString& path, const QStringList& endings) {
  return endings.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
}

// Markup that spreadsheet programs read: tables of web pages, the XML formats.
bool isMarkup(const QByteArray& head) {
  const QByteArray start = head.mid(head.startsWith("\xEF\xBB\xBF") ? 3 : 0).trimmed().left(16).toLower();
  return start.startsWith("<?xml") || start.startsWith("<html") || start.startsWith("<!doctype") ||
         start.startsWith("<table");
}

// Of an OpenDocument file: which of its parts are locked stands in its table of contents.
bool isLocked(const sheet::ZipArchive& archive) {
  const QString contents = u"META-INF/manifest.xml"_s;
  if (!archive.has(contents)) return false;
  const auto entry = archive.open(contents);
  const bool locked = entry->readAll().contains("manifest:encryption-data");
  entry->check();
  return locked;
}

std::unique_ptr<SheetBook> openZip(const QString& path, const SheetOptions& options) {
  const sheet::ZipArchive archive(path);
  if (archive.has(u"xl/workbook.xml"_s) || archive.has(u"[Content_Types].xml"_s))
    return sheet::openXlsx(path, options);
  if (archive.has(u"mimetype"_s)) {
    if (isLocked(archive)) sheet::failPassword(path);
    return sheet::openThroughOffice(path, options);
  }
  sheet::failNoSheet(path);
}

std::unique_ptr<SheetBook> openText(const QString& path, const SheetOptions& options,
                                    const QByteArray& head) {
  if (endsWithOneOf(path, {u"csv"_s, u"txt"_s, u"tsv"_s})) return sheet::openCsv(path, options);
  if (isMarkup(head)) return sheet::openThroughOffice(path, options);
  // Programs that export for spreadsheets like to call a text with tabs ".xls".
  if (endsWithOneOf(path, {u"xls"_s}) && head.contains('\t')) return sheet::openCsv(path, options);
  sheet::failNoSheet(path);
}

}  // namespace

std::unique_ptr<SheetBook> openSheets(const QString& path, SheetOptions options) {
  const QByteArray head = headOf(path);
  if (head.startsWith("PK\x03\x04")) return openZip(path, options);
  if (head.startsWith(sheet::CompoundFile::signature())) return sheet::openXls(path, options);
  if (sheet::looksLikeText(head)) return openText(path, options, head);
  // Older than the file in a file: records from the first byte.
  if (endsWithOneOf(path, {u"xls"_s}) && head.size() > 2 && head.at(0) == 9 && head.at(1) <= 8)
    return sheet::openThroughOffice(path, options);
  sheet::failNoSheet(path);
}

}  // namespace goodsbook
