#include "host/barcodes/library_builder.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QScopeGuard>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <utility>

#include "host/barcodes/barcode_table.h"
#include "host/barcodes/offline_key.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(LibraryBuilder)
};

constexpr qint64 linesPerReport = 100'000;

[[noreturn]] void fail(const QString& file, const QString& reason) {
  throw std::runtime_error(
      Texts::tr("不能写条码库 %1：%2").arg(QDir::toNativeSeparators(file), reason).toStdString());
}

// A library file that is being written, in one transaction.
class LibraryFile {
 public:
  explicit LibraryFile(QString file) : file_(std::move(file)) {
    check(sqlite3_open_v2(file_.toUtf8().constData(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                          nullptr));
    // Nobody reads the file before it is complete: it needs no journal, only to be on the disk at the end.
    run("pragma journal_mode=off; pragma synchronous=full; pragma locking_mode=exclusive;"
        "pragma cache_size=-65536; begin;"
        "create table C (C_NO2 varchar(13), C_NO varchar(13), C_NAME varchar(40), C_GG varchar(20),"
        " C_DW varchar(6), C_CD varchar(18))");
    check(sqlite3_prepare_v2(database_, "insert into C values (?1,?2,?3,?4,?5,?6)", -1, &insert_, nullptr));
  }
  ~LibraryFile() { close(); }
  LibraryFile(const LibraryFile&) = delete;
  LibraryFile& operator=(const LibraryFile&) = delete;

  void add(const KnownBarcode& known) {
    int place = 0;
    for (const QString& value : {offlineKey(known.barcode), known.barcode, known.name, known.specification,
                                 known.unit, known.origin}) {
      const QByteArray text = value.toUtf8();
      check(sqlite3_bind_text(insert_, ++place, text.constData(), static_cast<int>(text.size()),
                              SQLITE_TRANSIENT));
    }
    if (sqlite3_step(insert_) != SQLITE_DONE) check(sqlite3_errcode(database_));
    check(sqlite3_reset(insert_));
  }

  void finish() {
    run("create index C_KEY on C (C_NO2); commit");
    close();
  }

 private:
  void check(int result) {
    if (result != SQLITE_OK)
      fail(file_, QString::fromUtf8(database_ ? sqlite3_errmsg(database_) : sqlite3_errstr(result)));
  }
  void run(const char* batch) { check(sqlite3_exec(database_, batch, nullptr, nullptr, nullptr)); }
  void close() {
    sqlite3_finalize(std::exchange(insert_, nullptr));
    sqlite3_close_v2(std::exchange(database_, nullptr));
  }

  QString file_;
  sqlite3* database_ = nullptr;
  sqlite3_stmt* insert_ = nullptr;
};

LibraryBuildResult fill(LibraryFile& library, BarcodeTable& table, const LibraryBuildEvents& events) {
  LibraryBuildResult result;
  while (const auto line = table.next()) {
    if (line->fault.isEmpty()) {
      library.add(line->known);
      ++result.written;
    } else {
      events.wrongLine(line->number, line->fault);
      ++result.wrong;
    }
    if ((result.written + result.wrong) % linesPerReport == 0)
      events.progress(result.written + result.wrong, table.percent());
  }
  return result;
}

// The name changes at once; readers of the old file keep it. Flushing the folder makes the new name last.
void replace(const QString& made, const QString& library) {
  if (std::rename(QFile::encodeName(made).constData(), QFile::encodeName(library).constData()) != 0)
    fail(library, QString::fromLocal8Bit(std::strerror(errno)));
  const int folder = ::open(QFile::encodeName(QFileInfo(library).path()).constData(), O_RDONLY | O_DIRECTORY);
  if (folder < 0) return;
  ::fsync(folder);
  ::close(folder);
}

}  // namespace

LibraryBuildResult buildBarcodeLibrary(const QString& table, const QString& library,
                                       const LibraryBuildEvents& events) {
  BarcodeTable lines(table);
  if (!QDir().mkpath(QFileInfo(library).path())) fail(library, Texts::tr("不能建立目录"));
  QLockFile lock(library + u".lock"_s);
  if (!lock.tryLock(0)) fail(library, Texts::tr("目录不能写，或另一个程序正在建立条码库"));
  const QString made = library + u".new"_s;
  QFile::remove(made);  // what a build left that was killed
  const auto cleared = qScopeGuard([&made] { QFile::remove(made); });
  LibraryFile file(made);
  const LibraryBuildResult result = fill(file, lines, events);
  if (result.written == 0) {
    throw std::runtime_error(
        Texts::tr("文件 %1 里没有可用的条码").arg(QDir::toNativeSeparators(table)).toStdString());
  }
  file.finish();
  replace(made, library);
  return result;
}

}  // namespace goodsbook
