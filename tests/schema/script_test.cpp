#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "engine/syntax/batches.h"
#include "engine/syntax/parser.h"
#include "schema/schema.h"

namespace goodsbook::schema {
namespace {

int statementsIn(std::string_view script) {
  int count = 0;
  for (const engine::BatchText& batch : engine::splitBatches(script)) {
    const engine::Script parsed = engine::parse(batch.text);
    count += static_cast<int>(parsed.statements.size());
    // A server takes a procedure only as the first statement of its batch.
    for (std::size_t i = 1; i < parsed.statements.size(); ++i)
      EXPECT_FALSE(std::holds_alternative<engine::CreateProcedure>(parsed.statements[i].node));
  }
  return count;
}

std::string keptScript() {
  std::ifstream file(GOODSBOOK_SOURCE_DIR "/tests/schema/version_1.sql");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Script, IsTSql) {
  EXPECT_GT(statementsIn(script()), 60);
}

TEST(Script, UpgradesAreTSql) {
  for (int from = 1; from < version(); ++from) EXPECT_GE(statementsIn(upgradeStep(from)), 2);
}

TEST(Script, KeptScriptOfVersionOneIsTSql) {
  EXPECT_GT(statementsIn(keptScript()), 60);
}

TEST(Script, TheVersionIsTheOneThatItWrites) {
  const std::string written = "insert into SYS_VERSION (VERSION) values (" + std::to_string(version()) + ")";
  EXPECT_NE(script().find(written), std::string_view::npos);
}

TEST(Script, UpgradesWriteTheVersionTheyReach) {
  for (int from = 1; from < version(); ++from) {
    const std::string written = "update SYS_VERSION set VERSION = " + std::to_string(from + 1);
    EXPECT_NE(upgradeStep(from).find(written), std::string_view::npos) << from;
  }
}

}  // namespace
}  // namespace goodsbook::schema
