#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <stdexcept>

#include "host/sheet/sheet_table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct ListExport {
  Q_DECLARE_TR_FUNCTIONS(ListExport)
};

constexpr qsizetype writeAt = 1 << 20;

void appendCell(QByteArray& line, const QString& text) {
  const bool quoted = text.contains(u'"') || text.contains(u',') || text.contains(u'\n') ||
                      text.contains(u'\r') || text.startsWith(u' ') || text.endsWith(u' ');
  if (!quoted) {
    line += text.toUtf8();
    return;
  }
  line += '"';
  line += QString(text).replace(u'"', "\"\""_L1).toUtf8();
  line += '"';
}

}  // namespace

void writeCsv(const SheetTable& table, const QString& path) {
  QSaveFile file(path);
  const auto check = [&](bool good) {
    if (good) return;
    throw std::runtime_error(
        ListExport::tr("文件 %1 写不进去：%2。请检查磁盘空间，或文件是否正被其他程序打开。")
            .arg(QDir::toNativeSeparators(path), file.errorString())
            .toStdString());
  };
  check(file.open(QIODevice::WriteOnly));
  QByteArray text = "\xEF\xBB\xBF";
  const auto endLine = [&] {
    text += "\r\n";
    if (text.size() < writeAt) return;
    check(file.write(text) == text.size());
    text.clear();
  };
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (i > 0) text += ',';
    appendCell(text, table.columns[i].title);
  }
  endLine();
  for (int row = 0; row < table.rows.rowCount(); ++row) {
    table.onRow(row);
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      if (i > 0) text += ',';
      appendCell(text, cellText(table, row, table.columns[i]));
    }
    endLine();
  }
  check(file.write(text) == text.size());
  check(file.commit());
}

}  // namespace goodsbook
