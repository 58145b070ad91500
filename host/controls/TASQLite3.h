#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "host/export.h"

struct sqlite3;
struct sqlite3_stmt;

namespace goodsbook {

// A local SQLite database file, opened for reading only.
class GOODSBOOKHOST_EXPORT TASQLite3DB {
 public:
  TASQLite3DB();
  ~TASQLite3DB();
  TASQLite3DB(const TASQLite3DB&) = delete;
  TASQLite3DB& operator=(const TASQLite3DB&) = delete;

  QString Database;  // path of the file

  // Raises EDatabaseError when the file is missing or no database.
  void Open();
  void Close();
  bool Connected() const { return handle_ != nullptr; }

 private:
  friend class TASQLite3Query;
  sqlite3* handle_ = nullptr;
};

// One select on such a database, read row by row: opening stands on the first row. All values are texts.
// Every query ends before its database does.
class GOODSBOOKHOST_EXPORT TASQLite3Query {
 public:
  explicit TASQLite3Query(TASQLite3DB& database);
  ~TASQLite3Query();
  TASQLite3Query(const TASQLite3Query&) = delete;
  TASQLite3Query& operator=(const TASQLite3Query&) = delete;

  // Raises EDatabaseError when the statement cannot be run or the file is damaged.
  void Open(const QString& select);
  void Next();
  bool Eof() const { return eof_; }
  void Close();

  QStringList FieldNames() const;
  // Text of a field of the current row, without regard to the name's case; empty for NULL and behind the last
  // row. std::invalid_argument for an unknown field.
  QString FieldByName(const QString& name) const;

 private:
  [[noreturn]] void fail() const;

  TASQLite3DB& database_;
  sqlite3_stmt* statement_ = nullptr;
  bool eof_ = true;
};

}  // namespace goodsbook
