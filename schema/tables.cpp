#include "schema/tables.h"

#include "engine/syntax/parser.h"
#include "schema/schema.h"

namespace goodsbook::schema {
namespace {

std::vector<Table> readScript() {
  std::vector<Table> tables;
  for (const ScriptBatch& batch : batches(script())) {
    const engine::Script parsed = engine::parse(batch.text);
    for (const engine::Statement& statement : parsed.statements) {
      const auto* create = std::get_if<engine::CreateTable>(&statement.node);
      if (create == nullptr) continue;
      Table& table = tables.emplace_back();
      table.name = create->table.name.text;
      for (const engine::ColumnDefinition& column : create->columns) {
        table.columns.emplace_back(column.name.text);
        if (column.hasIdentity) table.identity = column.name.text;
      }
    }
  }
  return tables;
}

}  // namespace

const std::vector<Table>& tables() {
  static const std::vector<Table> all = readScript();
  return all;
}

}  // namespace goodsbook::schema
