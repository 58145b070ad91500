#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>

#include "host/data/server_database.h"

namespace goodsbook {

// A real server that tests run on instead of the embedded database: the one whose address the environment
// variable GOODSBOOK_TEST_SERVER holds, with GOODSBOOK_SERVER_USER and GOODSBOOK_SERVER_PASSWORD for somebody
// who may make databases there. Each test program makes one of its own and drops it at its end.
class TestServer {
 public:
  static bool isGiven();
  static TestServer& shared();  // std::runtime_error, EDatabaseError where it cannot be had

  ~TestServer();
  TestServer(const TestServer&) = delete;
  TestServer& operator=(const TestServer&) = delete;

  // A connection to the program's own database on it.
  std::unique_ptr<Database> open(std::function<QDateTime()> clock) const;

  // Makes the tables of a script, in place of all that is there.
  void makeTables(std::string_view script);
  // Takes all rows out of all tables and starts their numbers again.
  void emptyTables();
  // An empty shop, as a new database is; then the rows of a database file, where one is named.
  void beginShop(const QString& file = {});

 private:
  TestServer();

  std::unique_ptr<Database> outside_;  // stands on the database that the address names
  ServerAddress address_;
  QString name_;
  bool hasShop_ = false;
};

}  // namespace goodsbook
