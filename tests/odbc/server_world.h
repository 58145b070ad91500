#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "host/data/server_database.h"
#include "tests/odbc/answers.h"
#include "tests/odbc/postgres_server.h"

namespace goodsbook::test {

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
  EDatabaseError refused(const QString& batch) {
    return failure([&] { run(batch); });
  }

  std::unique_ptr<Database> database_;
};

}  // namespace goodsbook::test
