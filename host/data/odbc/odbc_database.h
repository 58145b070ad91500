#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "host/data/odbc/odbc_connection.h"
#include "host/data/odbc/odbc_pool.h"
#include "host/data/server_database.h"

namespace goodsbook {

class OdbcDatabase : public Database {
 public:
  explicit OdbcDatabase(const ServerTarget& target);  // connects

  void execute(const QString& batch, engine::ResultSink& sink, Permission permission) override;
  void query(const QString& select, engine::ResultSink& sink) override;
  std::unique_ptr<engine::Cursor> openCursor(const QString& select) override;
  std::unique_ptr<engine::Cursor> openCursorBeside(const QString& select,
                                                   const std::function<bool()>& pause) override;
  void begin() override;
  void commit() override;
  void rollback() override;
  bool inTransaction() const override { return inTransaction_; }
  void save(const QString& batch, const AuditLine& line, const std::function<void()>& within) override;
  void saveBeside(const QString& batch, const AuditLine& line, const std::function<void()>& pause) override;
  bool wasSaved(const QString& save) override;
  void forgetDoubt() override { doubtful_.reset(); }
  int storeBlob(const QString& table, const QString& field, const QString& keyField, const QString& keyValue,
                const QByteArray& bytes) override;
  const Dialect& dialect() const { return *dialect_; }
  void interrupt() override;
  QString displayName() const override;

 private:
  // A save of which nobody knows whether it was committed.
  struct Doubtful {
    QString token, batch, module, key, operation;
    bool operator==(const Doubtful&) const = default;
  };

  OdbcConnection& connected();  // connects again after a loss
  // Both wait beside the window where somebody sits before one. Reading may be given up, and takes its time.
  void send(const QString& batch, engine::ResultSink& sink);
  void send(const QString& batch);
  void read(const QString& select, engine::ResultSink& sink);
  class Wait;
  class Steps;
  void requireIdle() const;  // EDatabaseError for a step that begins in the middle of another
  QString prepared(const QString& batch) const;
  template <typename Work>
  decltype(auto) watched(Work&& work);
  template <typename Work>
  void inOwnTransaction(Work&& work);
  void saveOnce(const QString& batch, const AuditLine& line, const std::function<void()>& within);
  bool isSavedAlready(const QString& batch, const AuditLine& line);

  std::shared_ptr<OdbcPool> pool_;
  std::mutex mutex_;  // of the pointer, for interrupt()
  std::shared_ptr<OdbcConnection> main_;
  std::optional<Dialect> dialect_;  // known from the first connection on
  bool inTransaction_ = false;
  bool waiting_ = false;  // with events let through
  bool inSteps_ = false;
  std::unique_ptr<ServerAttendant> attendantOfSteps_;
  std::optional<Doubtful> doubtful_;
};

}  // namespace goodsbook
