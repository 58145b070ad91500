#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <chrono>
#include <memory>
#include <utility>

#include "engine/connection.h"
#include "host/data/beside.h"
#include "host/data/connection_pool.h"
#include "host/data/database.h"
#include "host/data/engine_errors.h"
#include "host/data/statement_text.h"
#include "host/data/value_text.h"
#include "schema/schema.h"
#include "schema/upgrade.h"

namespace goodsbook {
namespace {

// 64 MB: settling waits for the disk three times, so it should not come often.
constexpr int mostLogPages = 16'384;
constexpr std::chrono::milliseconds patienceWithReaders{250};

// Adds up what a batch wrote.
class WrittenRows : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
  void affected(std::int64_t rows) override { total += rows; }

  std::int64_t total = 0;
};

engine::Permission enginePermission(Database::Permission permission) {
  return permission == Database::Permission::Owner ? engine::Permission::Owner : engine::Permission::Screens;
}

class EmbeddedDatabase : public Database {
 public:
  EmbeddedDatabase(const QString& file, EmbeddedOptions options) : file_(file) {
    if (file == u":memory:") {
      folder_ = std::make_unique<QTemporaryDir>();
      if (!folder_->isValid()) {
        throw EDatabaseError(
            5133, 16, 1, 1,
            QCoreApplication::translate("Database", "无法创建临时文件夹：%1").arg(folder_->errorString()));
      }
      file_ = folder_->filePath(QStringLiteral("goodsbook.db"));
      name_ = file;
    } else {
      name_ = QFileInfo(file).fileName();
    }
    options_.busyTimeout = std::chrono::milliseconds(options.busyTimeoutMs);
    options_.create = options.create;
    options_.ownTable = schema::versionTable;
    if (options.clock) options_.now = [clock = std::move(options.clock)] { return fromDateTime(clock()); };
    asDatabaseErrors([this] {
      connection_ = open();
      schema::prepare(*connection_);
    });
    options_.create = false;
    pool_ = std::make_shared<ConnectionPool>(
        [path = path(), options = options_] { return engine::Connection::open(path, options); });
  }

  void execute(const QString& batch, engine::ResultSink& sink, Permission permission) override {
    asDatabaseErrors([&] { connection_->execute(batch.toStdString(), sink, enginePermission(permission)); });
  }

  void query(const QString& select, engine::ResultSink& sink) override {
    asDatabaseErrors([&] { connection_->query(select.toStdString(), sink); });
  }

  std::unique_ptr<engine::Cursor> openCursor(const QString& select) override {
    return asDatabaseErrors([&] { return pool_->query(select.toStdString()); });
  }

  void begin() override {
    asDatabaseErrors([this] { connection_->begin(); });
  }
  void commit() override {
    asDatabaseErrors([this] { connection_->commit(); });
  }
  void rollback() override {
    asDatabaseErrors([this] { connection_->rollback(); });
  }
  bool inTransaction() const override { return connection_->inTransaction(); }

  void saveBeside(const QString& batch, const AuditLine& line, const std::function<void()>& pause) override {
    const std::string statements = batch.toStdString();
    const std::string audit = auditStatement(line, batch, {}).toStdString();
    beside(
        [&] {
          WrittenRows sink;
          const auto connection = open();
          connection->begin();
          connection->execute(statements, sink, engine::Permission::Screens);
          connection->execute(audit, sink, engine::Permission::Screens);
          connection->commit();
        },
        pause);
  }

  int storeBlob(const QString& table, const QString& field, const QString& keyField, const QString& keyValue,
                const QByteArray& bytes) override {
    WrittenRows written;
    execute(QStringLiteral("update %1 set %2=%3 where %4=%5")
                .arg(quotedName(table), quotedName(field), bytesLiteral(bytes), quotedName(keyField),
                     textLiteral(keyValue)),
            written, Permission::Screens);
    return static_cast<int>(written.total);
  }

  void interrupt() override {
    connection_->interrupt();
    pool_->interrupt();
  }

  void setRelaxed(bool relaxed) override {
    asDatabaseErrors([&] { connection_->setRelaxed(relaxed); });
    settledPages_ = 0;
  }

  bool wantsSettling() override {
    const int pages = connection_->logPages();
    if (pages < settledPages_) settledPages_ = 0;  // the log was begun anew
    return pages - settledPages_ > mostLogPages;
  }

  void settle(const std::function<void()>& pause) override {
    beside(
        [&] {
          engine::Options options = options_;
          options.busyTimeout = patienceWithReaders;
          engine::Connection::open(path(), options)->settle();
        },
        pause);
    // Where somebody reads in the log, the next try is worth its while when as much has been added again.
    settledPages_ = connection_->logPages();
  }

  QString backup(const QString& folder, const QString& stamp, const std::function<void()>& pause) override {
    const QFileInfo source(folder_ ? QDir(folder).filePath(QFileInfo(file_).fileName()) : file_);
    const QString name =
        source.absoluteDir().filePath(source.completeBaseName() + QStringLiteral("-backup-") + stamp);
    QString target = name + QStringLiteral(".db");
    for (int other = 2; QFileInfo::exists(target); ++other)
      target = name + u'-' + QString::number(other) + QStringLiteral(".db");
    beside([&] { open()->backup(QFileInfo(target).filesystemFilePath()); }, pause);
    return target;
  }

  QString displayName() const override { return name_; }

 private:
  std::filesystem::path path() const { return QFileInfo(file_).filesystemFilePath(); }
  std::unique_ptr<engine::Connection> open() const { return engine::Connection::open(path(), options_); }

  // `work` opens a connection of its own.
  static void beside(const std::function<void()>& work, const std::function<void()>& pause) {
    asDatabaseErrors([&] { runBeside(work, pause); });
  }

  std::unique_ptr<QTemporaryDir> folder_;  // goes last, when nothing is open in it any more
  QString file_;
  QString name_;
  engine::Options options_;
  std::unique_ptr<engine::Connection> connection_;
  std::shared_ptr<ConnectionPool> pool_;
  int settledPages_ = 0;  // of the log, at the last settling
};

}  // namespace

std::unique_ptr<Database> openEmbeddedDatabase(const QString& file, EmbeddedOptions options) {
  return std::make_unique<EmbeddedDatabase>(file, std::move(options));
}

}  // namespace goodsbook
