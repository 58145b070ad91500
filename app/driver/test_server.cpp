#include "app/driver/test_server.h"

#include <unistd.h>

#include <cstdio>

#include "host/data/copy/database_copy.h"
#include "host/data/errors.h"
#include "host/data/sql_sets.h"
#include "schema/schema.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

void owner(Database& database, const QString& batch) {
  runSql(database, batch, Database::Permission::Owner);
}

QString textOf(const schema::ScriptBatch& batch) {
  return QString::fromUtf8(batch.text.data(), static_cast<qsizetype>(batch.text.size()));
}

}  // namespace

bool TestServer::isGiven() {
  return !qEnvironmentVariableIsEmpty("GOODSBOOK_TEST_SERVER");
}

TestServer& TestServer::shared() {
  static TestServer server;
  return server;
}

TestServer::TestServer() : name_(u"goodsbook_test_%1"_s.arg(getpid())) {
  const auto given = ServerAddress::parse(qEnvironmentVariable("GOODSBOOK_TEST_SERVER"));
  outside_ = openServerDatabase(given, serverLoginFromEnvironment());
  owner(*outside_, u"create database %1 collate Chinese_PRC_CI_AS"_s.arg(name_));
  owner(*outside_, u"alter database %1 set read_committed_snapshot on"_s.arg(name_));
  address_ = given.withDatabase(name_);
}

TestServer::~TestServer() {
  try {
    owner(*outside_, u"alter database %1 set single_user with rollback immediate"_s.arg(name_));
    owner(*outside_, u"drop database "_s + name_);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "database %s stays on the server: %s\n", qPrintable(name_), error.what());
  }
}

std::unique_ptr<Database> TestServer::open(std::function<QDateTime()> clock) const {
  return openServerDatabase(address_, serverLoginFromEnvironment(), {.clock = std::move(clock)});
}

void TestServer::makeTables(std::string_view script) {
  const auto database = open({});
  const SqlSets present =
      runSql(*database, u"select name, type from sys.objects where type in ('U','P') and is_ms_shipped=0"_s,
             Database::Permission::Owner);
  for (const auto& row : present.sets.at(0).rows) {
    const bool procedure = row.at(1).value_or(QString()).trimmed() == "P"_L1;
    owner(*database, (procedure ? u"drop procedure "_s : u"drop table "_s) + row.at(0).value_or(QString()));
  }
  for (const schema::ScriptBatch& batch : schema::batches(script)) owner(*database, textOf(batch));
  hasShop_ = false;
}

void TestServer::emptyTables() {
  const auto database = open({});
  const SqlSets tables =
      runSql(*database, u"select name from sys.tables where is_ms_shipped=0"_s, Database::Permission::Owner);
  QString batch;
  for (const auto& row : tables.sets.at(0).rows)
    batch += u"truncate table [%1];"_s.arg(row.at(0).value_or(QString()));
  owner(*database, batch);
}

void TestServer::beginShop(const QString& file) {
  if (!hasShop_) {
    makeTables(schema::script());
    hasShop_ = true;
  } else {
    emptyTables();
    const auto database = open({});
    for (const schema::ScriptBatch& batch : schema::batches(schema::script())) {
      if (textOf(batch).trimmed().startsWith("insert into"_L1)) owner(*database, textOf(batch));
    }
  }
  if (!file.isEmpty()) copyDatabase(*openEmbeddedDatabase(file), *open({}));
}

}  // namespace goodsbook
