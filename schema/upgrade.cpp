#include "schema/upgrade.h"

#include <string>
#include <utility>

#include "schema/schema.h"

namespace goodsbook::schema {
namespace {

using engine::Connection;
using engine::Diagnostic;
using engine::SqlError;

constexpr int unknownTable = 208;
constexpr int newerDatabase = 948;
constexpr int brokenVersion = 50000;
constexpr int fatal = 20;

[[noreturn]] void fail(int number, std::string text) {
  throw SqlError(Diagnostic{.number = number, .severity = fatal, .text = std::move(text)});
}

// 0 for a database without tables.
int versionOf(Connection& connection) {
  try {
    const auto cursor = connection.query("select VERSION from SYS_VERSION");
    if (!cursor->next()) fail(brokenVersion, "数据库版本记录(SYS_VERSION)是空的，无法打开!");
    return static_cast<int>(cursor->row().integer(0));
  } catch (const SqlError& error) {
    if (error.diagnostic().number == unknownTable) return 0;
    throw;
  }
}

class SilentSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

void run(Connection& connection, std::string_view script) {
  SilentSink sink;
  for (const ScriptBatch& batch : batches(script))
    connection.execute(batch.text, sink, engine::Permission::Owner);
}

// One step from `seen`, unless another program has done it meanwhile. Gives the version afterwards.
int advance(Connection& connection, int seen) {
  connection.begin();
  try {
    if (versionOf(connection) == seen) run(connection, seen == 0 ? script() : upgradeStep(seen));
    const int reached = versionOf(connection);
    if (reached <= seen) fail(brokenVersion, "数据库升级没有完成，版本仍是 " + std::to_string(reached) + "!");
    connection.commit();
    return reached;
  } catch (...) {
    if (connection.inTransaction()) connection.rollback();
    throw;
  }
}

}  // namespace

void prepare(Connection& connection) {
  int present = versionOf(connection);
  while (present < version()) present = advance(connection, present);
  if (present > version())
    fail(newerDatabase, "此数据库由更新版本的程序建立(数据库版本 " + std::to_string(present) +
                            "，本程序版本 " + std::to_string(version()) + ")，请先升级程序!");
}

}  // namespace goodsbook::schema
