#include "engine/catalog/catalog.h"

#include <algorithm>

#include "engine/catalog/type_names.h"
#include "engine/storage/sqlite_statement.h"
#include "engine/syntax/parser.h"

namespace goodsbook::engine {
namespace {

bool isHidden(std::string_view table) {
  return table.starts_with(reservedPrefix) || table.starts_with("sqlite_");
}

std::string freeRowName(const TableInfo& table) {
  for (const std::string_view name : {"rowid", "_rowid_", "oid"})
    if (!table.find(name)) return std::string(name);
  return {};
}

// An index is named "table.index" in the file; those of keys have names of SQLite's.
KeyInfo keyNamed(std::string_view index, std::string_view origin, const TableInfo& table) {
  if (origin == "pk") return {UniqueBy::PrimaryKey, "PK_" + table.name};
  if (origin == "u") return {UniqueBy::Constraint, "UQ_" + table.name};
  return {UniqueBy::Index, std::string(index.substr(std::min(index.size(), table.name.size() + 1)))};
}

}  // namespace

std::shared_ptr<const Catalog> Catalog::load(sqlite3* db, CatalogVersion version) {
  auto catalog = std::make_shared<Catalog>();
  catalog->version_ = version;
  catalog->loadTables(db);
  catalog->loadIndexes(db);
  catalog->loadProcedures(db);
  return catalog;
}

void Catalog::loadTables(sqlite3* db) {
  SqliteStatement rows(db,
                       "SELECT m.name, c.name, c.type, c.\"notnull\", c.dflt_value FROM sqlite_schema m "
                       "JOIN pragma_table_info(m.name) c WHERE m.type = 'table' ORDER BY m.name, c.cid");
  while (rows.step()) {
    if (isHidden(rows.text(0))) continue;
    TableInfo& table = tables_[std::string(rows.text(0))];
    table.name = rows.text(0);
    ColumnInfo column;
    column.name = rows.text(1);
    column.identity = rows.text(2) == "INTEGER";
    column.type = typeOfDeclared(rows.text(2));
    column.nullable = rows.integer(3) == 0 && !column.identity;
    column.defaultSql = rows.text(4);
    column.defaultsToNow = column.defaultSql == "CURRENT_TIMESTAMP";
    table.columns.push_back(std::move(column));
  }
  for (auto& [name, table] : tables_) table.rowName = freeRowName(table);
}

void Catalog::loadIndexes(sqlite3* db) {
  SqliteStatement rows(db,
                       "SELECT m.name, i.name, i.origin, x.name, i.\"unique\", x.seqno FROM sqlite_schema m "
                       "JOIN pragma_index_list(m.name) i JOIN pragma_index_info(i.name) x "
                       "WHERE m.type = 'table' AND NOT i.partial ORDER BY m.name, i.name, x.seqno");
  while (rows.step()) {
    if (isHidden(rows.text(0))) continue;
    TableInfo& table = tables_[std::string(rows.text(0))];
    const auto column = table.find(rows.text(3));
    const bool first = rows.integer(5) == 0;
    if (column && first) table.indexed.push_back(*column);
    if (rows.integer(4) == 0) continue;
    if (first) table.keys.push_back(keyNamed(rows.text(1), rows.text(2), table));
    if (column) table.keys.back().columns.push_back(*column);
  }
}

void Catalog::loadProcedures(sqlite3* db) {
  SqliteStatement exists(db, "SELECT 1 FROM sqlite_schema WHERE name = 'goodsbook_procedures'");
  if (!exists.step()) return;
  SqliteStatement rows(db, "SELECT name, definition FROM goodsbook_procedures");
  while (rows.step()) {
    auto procedure = std::make_unique<ProcedureInfo>();
    procedure->name = rows.text(0);
    procedure->text = rows.text(1);
    procedure->script = parse(procedure->text);
    const auto& definition = std::get<CreateProcedure>(procedure->script.statements.front().node);
    for (const ProcedureParameter& parameter : definition.parameters)
      procedure->parameters.push_back(
          {std::string(parameter.name.text), typeOf(parameter.type, 1), parameter.defaultValue.get()});
    procedure->body = &definition.body;
    procedures_.emplace(procedure->name, std::move(procedure));
  }
}

const TableInfo* Catalog::findTable(std::string_view name) const {
  const auto found = tables_.find(name);
  return found == tables_.end() ? nullptr : &found->second;
}

const ProcedureInfo* Catalog::findProcedure(std::string_view name) const {
  const auto found = procedures_.find(name);
  return found == procedures_.end() ? nullptr : found->second.get();
}

}  // namespace goodsbook::engine
