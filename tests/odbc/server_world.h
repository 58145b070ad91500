#pragma once

#include <gtest/gtest.h>

#include <QString>
#include <memory>
#include <optional>

#include "host/data/server_database.h"
#include "host/data/sql_sets.h"
#include "tests/odbc/postgres_server.h"

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace goodsbook::test {

using Rows = std::vector<std::vector<QString>>;  // "NULL" for NULL

// Tests on the PostgreSQL server of the program, with a connection and empty tables of their own.
class ServerTest : public testing::Test {
 protected:
  void SetUp() override {
    server().psql(QStringLiteral("drop schema if exists public cascade; create schema public"));
    database_ = open();
  }
  void TearDown() override { database_.reset(); }

  static PostgresServer& server() { return PostgresServer::shared(); }
  std::unique_ptr<Database> open(ServerOptions options = {}) const {
    return openServerDatabase(server().address(), server().login(), std::move(options));
  }

  Database& database() { return *database_; }
  SqlSets run(const QString& batch) { return runSql(*database_, batch, Database::Permission::Owner); }
  // The rows of the last set.
  Rows rows(const QString& batch) { return texts(run(batch)); }
  static Rows texts(const SqlSets& answer) {
    Rows result;
    if (answer.sets.empty()) return result;
    for (const auto& row : answer.sets.back().rows) {
      auto& line = result.emplace_back();
      for (const auto& value : row) line.push_back(value.value_or(QStringLiteral("NULL")));
    }
    return result;
  }
  // The error that a piece of work has to end with.
  template <typename Work>
  static EDatabaseError failure(Work&& work) {
    try {
      work();
    } catch (const EDatabaseError& error) {
      return error;
    }
    ADD_FAILURE() << "no error";
    return {0, 0, 0, 0, {}};
  }
  EDatabaseError refused(const QString& batch) {
    return failure([&] { run(batch); });
  }

  std::unique_ptr<Database> database_;
};

}  // namespace goodsbook::test
