#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "engine/row.h"

namespace goodsbook::engine {

// Who sends a batch. Screens may read, insert, update, delete and run procedures; everything else is error
// 262.
enum class Permission : std::uint8_t { Screens, Owner };

struct Options {
  std::chrono::milliseconds busyTimeout{10'000};  // how long a writer waits for another program
  std::function<std::int64_t()> now =
      {};               // GETDATE() in milliseconds since 1900-01-01; the system's local clock when empty
  bool create = false;  // create the file when it is missing
  // The table by which a program knows its files: one that holds anything but not this table is another
  // program's, is left as it is, and gives error 5171. Empty: any file will do.
  std::string ownTable = {};
  // As on a server, RAISERROR from severity 11 up neither ends a batch nor undoes it: it is told as a notice.
  bool raisedErrorsGoOn = false;
};

// One connection to a database file, used by one thread. Batches in T-SQL run on SQLite with a server's
// meaning. Storage: WAL, synchronous FULL. Several connections and programs may share one file; readers never
// wait.
class Connection {
 public:
  // Opens a file. Error 4060 when it is missing (and create is off), 5171 when it is no database, 5172 when
  // it is damaged; 823 for a disk that cannot be read.
  static std::unique_ptr<Connection> open(const std::filesystem::path& file, Options options = {});

  virtual ~Connection() = default;

  // Runs a batch: in a transaction of its own, or inside the one that begin() opened. An error of severity 11
  // or more anywhere, RAISERROR included, undoes the whole batch (and the open transaction) and is thrown. A
  // batch of nothing but selects takes no write lock.
  virtual void execute(std::string_view batch, ResultSink& sink,
                       Permission permission = Permission::Screens) = 0;

  // Opens one select. Several cursors may be open at once, while batches run on other connections.
  virtual std::unique_ptr<Cursor> query(std::string_view select) = 0;

  // Runs one select to its end. An error leaves an open transaction as it is.
  virtual void query(std::string_view select, ResultSink& sink) = 0;

  // A transaction around several batches. begin() takes the write lock at once (error 1222 when it cannot be
  // had within the busy time-out). After an error in a batch the transaction is already rolled back and
  // inTransaction() is false.
  virtual void begin() = 0;
  virtual void commit() = 0;
  virtual void rollback() = 0;
  virtual bool inTransaction() const = 0;

  // Relaxed: commits never wait for the disk, and the log grows until somebody calls settle(). A killed
  // program loses nothing even so; a machine that fails may lose what came after the last settle(). Not
  // inside a transaction.
  virtual void setRelaxed(bool relaxed) = 0;

  // Pages in the log after the last relaxed commit.
  virtual int logPages() const = 0;

  // Brings to the disk what was committed by anybody, and begins the log anew; meant for a connection in a
  // thread of its own, since it waits for the disk. False when the log could not be begun anew because
  // somebody reads in it, or writes, for longer than the busy time-out; everything is on the disk even then.
  virtual bool settle() = 0;

  // Stops the statement that is running; it fails with error 3617. May be called from any thread.
  virtual void interrupt() = 0;

  // A consistent copy of the whole database in another file, checked after writing. The target must not
  // exist.
  virtual void backup(const std::filesystem::path& target) = 0;

  // Throws 5172 with what is wrong when the file's structure or an index is damaged.
  virtual void checkIntegrity() = 0;
};

}  // namespace goodsbook::engine
