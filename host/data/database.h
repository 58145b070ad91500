#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>

#include "engine/row.h"
#include "host/data/audit_line.h"
#include "host/export.h"

namespace goodsbook {

// The one interface to a database, whatever stands behind it. All failures are EDatabaseError.
class GOODSBOOKHOST_EXPORT Database {
 public:
  enum class Permission { Screens, Owner };

  virtual ~Database();

  // Runs a batch, in a transaction of its own or in the open one; an error of severity 11 or more leaves
  // nothing of it.
  virtual void execute(const QString& batch, engine::ResultSink& sink,
                       Permission permission = Permission::Screens) = 0;

  // Streams one select; the sink sees beginSet, the rows, endSet.
  virtual void query(const QString& select, engine::ResultSink& sink) = 0;

  // Opens one select that is read in slices. It stands on a connection of its own: batches run beside it.
  virtual std::unique_ptr<engine::Cursor> openCursor(const QString& select) = 0;

  // openCursor() for a list that somebody waits for: where the rows come from afar, `pause` is called every
  // few milliseconds until the first ones are there, and ready() of the cursor tells whether the next ones
  // are. False from `pause` stops the statement: EAbort. `pause` must not throw; it may let events through,
  // so whatever the caller stands on may be gone when EAbort arrives.
  virtual std::unique_ptr<engine::Cursor> openCursorBeside(const QString& select,
                                                           const std::function<bool()>& pause);

  // A transaction around several batches. It takes the write lock at once. An error in a batch ends it.
  virtual void begin() = 0;
  virtual void commit() = 0;
  virtual void rollback() = 0;
  virtual bool inTransaction() const = 0;

  // Runs a batch together with its line in the audit table, in a transaction of its own. Whatever becomes of
  // the connection meanwhile, the batch is never saved twice: ESaveUnknown where the answer to the commit is
  // lost and the server cannot be asked. The same batch, sent again next, is looked up first.
  // `within`, if any, runs behind the batch in that transaction: what it throws takes the batch back.
  virtual void save(const QString& batch, const AuditLine& line, const std::function<void()>& within = {});

  // Whether the save that ended in ESaveUnknown was committed; EDatabaseError while it cannot be told. An
  // embedded database always knows what it has committed: nothing there ends so.
  virtual bool wasSaved(const QString& /*save*/) { return false; }

  // The one who would send that save again has gone, or sees the rows as they are now: the same words are
  // another save from here on.
  virtual void forgetDoubt() {}

  // save() for work that takes long: where the database can do it beside the window's thread, `pause` is
  // called every few milliseconds meanwhile. No transaction may be open; `pause` must not throw.
  virtual void saveBeside(const QString& batch, const AuditLine& line, const std::function<void()>& pause);

  // Stores bytes into one cell: table.field of the row whose keyField equals keyValue. In the open
  // transaction or its own. Returns the number of rows written.
  virtual int storeBlob(const QString& table, const QString& field, const QString& keyField,
                        const QString& keyValue, const QByteArray& bytes) = 0;

  // Stops the running statement, from any thread.
  virtual void interrupt() = 0;

  // What RelaxedCommits stands on: commits that need not wait for the disk one by one, whether so many were
  // made that it is time to settle() them, and settle(), which has them on the disk when it returns and calls
  // `pause` every few milliseconds meanwhile. A server looks after all this itself.
  virtual void setRelaxed(bool /*relaxed*/) {}
  virtual bool wantsSettling() { return false; }
  virtual void settle(const std::function<void()>& /*pause*/) {}

  // Writes a checked copy of an embedded database beside it (of a private one into `folder`), with `stamp` in
  // its name, and returns its path; calls `pause` every few milliseconds meanwhile. A server looks after its
  // own backups: empty.
  virtual QString backup(const QString& /*folder*/, const QString& /*stamp*/,
                         const std::function<void()>& /*pause*/) {
    return {};
  }

  // What the status line and the log-in window call this database: the file's name, or server and database.
  virtual QString displayName() const = 0;
};

// begin() on construction, rollback() unless commit() was reached.
class GOODSBOOKHOST_EXPORT Transaction {
 public:
  explicit Transaction(Database& database);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void commit();

 private:
  Database& database_;
  bool open_ = true;
};

// While it lives, commits do not wait for the disk one by one: a killed program loses nothing even so, only a
// machine that fails may lose the last rows. keepUp(), between two of them, keeps what waits for the disk
// within bounds; finish() brings everything to the disk, and the end of its life tries to. Both wait in a
// thread of their own and call `pause` every few milliseconds meanwhile, which must not throw. Work with the
// database in `pause` may read only.
class GOODSBOOKHOST_EXPORT RelaxedCommits {
 public:
  explicit RelaxedCommits(Database& database);
  ~RelaxedCommits();
  RelaxedCommits(const RelaxedCommits&) = delete;
  RelaxedCommits& operator=(const RelaxedCommits&) = delete;
  void keepUp(const std::function<void()>& pause);
  void finish(const std::function<void()>& pause);

 private:
  Database& database_;
  bool relaxed_ = true;
};

struct EmbeddedOptions {
  bool create = true;  // a missing file is created with the schema and the user ADMIN
  int busyTimeoutMs = 10'000;
  std::function<QDateTime()> clock = {};  // GETDATE(); the system's clock when empty
};

// Opens an embedded database file, creates or upgrades its schema. ":memory:" is a private file that goes
// with the object.
GOODSBOOKHOST_EXPORT std::unique_ptr<Database> openEmbeddedDatabase(const QString& file,
                                                                    EmbeddedOptions options = {});

}  // namespace goodsbook
