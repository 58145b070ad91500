#include "schema/role.h"

#include "schema/tables.h"

namespace goodsbook::schema {
namespace {

// What may be done with the rows of a table.
std::string rightsOn(const std::string& table) {
  if (table == "SYS_VERSION") return "select";
  if (table == "SYS_AUDIT") return "select, insert";
  return "select, insert, update, delete";
}

}  // namespace

std::string roleScript() {
  const std::string role = roleName;
  std::string text = "if database_principal_id('" + role + "') is null create role " + role + "\ngo\n";
  for (const Table& table : tables()) {
    text += "grant " + rightsOn(table.name) + " on object::dbo." + table.name + " to " + role + "\n";
  }
  text += "grant execute on object::dbo.SYS_DW to " + role + "\ngo\n";
  return text;
}

}  // namespace goodsbook::schema
