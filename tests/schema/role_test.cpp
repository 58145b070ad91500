#include "schema/role.h"

#include <gtest/gtest.h>

#include "schema/tables.h"

namespace goodsbook::schema {
namespace {

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(Tables, AreThoseOfTheScript) {
  const auto& all = tables();
  ASSERT_GT(all.size(), 30U);
  EXPECT_EQ(all.front().name, "D1001");
  for (const Table& table : all) {
    EXPECT_FALSE(table.columns.empty()) << table.name;
    if (table.name == "D1801DW") {
      EXPECT_EQ(table.identity, "adw");
      EXPECT_EQ(table.columns.size(), 16U);
    }
    if (table.name == "D1801") {
      EXPECT_EQ(table.identity, "");
    }
  }
}

TEST(Role, MayReadAndWriteRowsAndRunOneProcedure) {
  const std::string script = roleScript();
  for (const Table& table : tables())
    EXPECT_TRUE(contains(script, "on object::dbo." + table.name + " to ")) << table.name;
  EXPECT_TRUE(
      contains(script, "grant select, insert, update, delete on object::dbo.D1801 to goodsbook_user"));
  EXPECT_TRUE(contains(script, "grant execute on object::dbo.SYS_DW to goodsbook_user"));
  EXPECT_TRUE(contains(script, "grant select, insert on object::dbo.SYS_AUDIT to goodsbook_user"));
  EXPECT_TRUE(contains(script, "grant select on object::dbo.SYS_VERSION to goodsbook_user"));
  EXPECT_FALSE(contains(script, "alter "));
  EXPECT_FALSE(contains(script, "control"));
}

}  // namespace
}  // namespace goodsbook::schema
