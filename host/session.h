#pragma once

#include <QDateTime>
#include <QString>
#include <memory>
#include <vector>

#include "host/data/database.h"
#include "host/desktop.h"
#include "host/export.h"

namespace goodsbook {

// One operation that a screen sent, as the driver's `statements` tells it.
struct SentStatement {
  QString op;  // "opensql", "ExecSql", "GetNOID", "Applyupdatapict"
  QString module, key, operation, sql, result;
};

// What the running program works on: the database, the user's desktop, the program's folder. There is one at
// a time; app/ makes it, screens reach it through the data operations and DISPINFO.
class GOODSBOOKHOST_EXPORT Session {
 public:
  Session(std::unique_ptr<Database> database, std::unique_ptr<Desktop> desktop, QString programDir);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  static Session& current();  // std::logic_error when there is none
  static bool exists();

  Database& database() { return *database_; }
  Desktop& desktop() { return *desktop_; }
  QString programDir() const { return programDir_; }  // label set, settings files, barcode library
  QString programFile(const QString& name) const;

  void record(SentStatement statement);  // kept only while recording
  void setRecording(bool on) { recording_ = on; }
  std::vector<SentStatement> takeStatements();  // empties the list

 private:
  std::unique_ptr<Database> database_;
  std::unique_ptr<Desktop> desktop_;
  QString programDir_;
  bool recording_ = false;
  std::vector<SentStatement> statements_;
};

}  // namespace goodsbook
