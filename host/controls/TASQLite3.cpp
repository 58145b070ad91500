#include "host/controls/TASQLite3.h"

#include <sqlite3.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <stdexcept>
#include <utility>

#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr int busyTimeoutMs = 2000;

[[noreturn]] void refuse(int number, const QString& text) {
  throw EDatabaseError(number, 16, 1, 1, text);
}

}  // namespace

TASQLite3DB::TASQLite3DB() = default;
TASQLite3DB::~TASQLite3DB() {
  Close();
}

void TASQLite3DB::Open() {
  Close();
  if (!QFileInfo(Database).isFile()) {
    refuse(SQLITE_CANTOPEN, QCoreApplication::translate("TASQLite3DB", "文件不存在：%1").arg(Database));
  }
  const int opened = sqlite3_open_v2(Database.toUtf8().constData(), &handle_, SQLITE_OPEN_READONLY, nullptr);
  // A file that is no database shows only when its first page is read.
  const int read = opened == SQLITE_OK ? sqlite3_exec(handle_, "select count(*) from sqlite_master", nullptr,
                                                      nullptr, nullptr)
                                       : opened;
  if (read != SQLITE_OK) {
    const QString reason = QString::fromUtf8(sqlite3_errstr(read));
    Close();
    refuse(read,
           QCoreApplication::translate("TASQLite3DB", "无法打开数据库文件：%1 (%2)").arg(Database, reason));
  }
  sqlite3_busy_timeout(handle_, busyTimeoutMs);
}

void TASQLite3DB::Close() {
  sqlite3_close_v2(std::exchange(handle_, nullptr));
}

TASQLite3Query::TASQLite3Query(TASQLite3DB& database) : database_(database) {}
TASQLite3Query::~TASQLite3Query() {
  Close();
}

void TASQLite3Query::fail() const {
  refuse(sqlite3_errcode(database_.handle_), QString::fromUtf8(sqlite3_errmsg(database_.handle_)));
}

void TASQLite3Query::Open(const QString& select) {
  Close();
  if (!database_.Connected()) database_.Open();
  const QByteArray text = select.toUtf8();
  if (sqlite3_prepare_v2(database_.handle_, text.constData(), static_cast<int>(text.size()), &statement_,
                         nullptr) != SQLITE_OK) {
    fail();
  }
  if (statement_ == nullptr || sqlite3_column_count(statement_) == 0) {
    Close();
    refuse(SQLITE_MISUSE, QCoreApplication::translate("TASQLite3DB", "不是查询语句：%1").arg(select));
  }
  eof_ = false;
  Next();
}

void TASQLite3Query::Next() {
  if (statement_ == nullptr || eof_) return;
  const int step = sqlite3_step(statement_);
  eof_ = step != SQLITE_ROW;
  if (eof_ && step != SQLITE_DONE) fail();
}

void TASQLite3Query::Close() {
  sqlite3_finalize(std::exchange(statement_, nullptr));
  eof_ = true;
}

QStringList TASQLite3Query::FieldNames() const {
  QStringList names;
  for (int i = 0; statement_ != nullptr && i < sqlite3_column_count(statement_); ++i) {
    names << QString::fromUtf8(sqlite3_column_name(statement_, i));
  }
  return names;
}

QString TASQLite3Query::FieldByName(const QString& name) const {
  for (int i = 0; statement_ != nullptr && i < sqlite3_column_count(statement_); ++i) {
    if (QString::fromUtf8(sqlite3_column_name(statement_, i)).compare(name, Qt::CaseInsensitive) != 0)
      continue;
    if (eof_) return {};
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, i));
    return QString::fromUtf8(text, sqlite3_column_bytes(statement_, i));
  }
  throw std::invalid_argument("no field " + name.toStdString());
}

}  // namespace goodsbook
