#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engine/catalog/table_info.h"
#include "engine/runtime/value.h"
#include "engine/syntax/ast.h"
#include "engine/syntax/names.h"

struct sqlite3;

namespace goodsbook::engine {

// Tables of the engine's own begin with this and are seen by nobody.
inline constexpr std::string_view reservedPrefix = "goodsbook_";

struct ParameterInfo {
  std::string name{};  // with its @
  SqlType type{};
  const Expression* defaultValue = nullptr;  // null: an argument is needed
};

struct ProcedureInfo {
  std::string name{};
  std::string text{};  // of the CREATE PROCEDURE
  Script script{};     // views into the text
  std::vector<ParameterInfo> parameters{};
  const std::vector<Statement>* body = nullptr;
};

// Which state of a file's definitions a catalogue shows.
struct CatalogVersion {
  std::int64_t schema = -1;
  std::int64_t procedures = -1;
  bool operator==(const CatalogVersion&) const = default;
};

// The tables and procedures of a file at one moment.
class Catalog {
 public:
  // What stands in the file while it has this version.
  static std::shared_ptr<const Catalog> load(sqlite3* db, CatalogVersion version);

  const CatalogVersion& version() const { return version_; }
  const TableInfo* findTable(std::string_view name) const;
  const ProcedureInfo* findProcedure(std::string_view name) const;

 private:
  void loadTables(sqlite3* db);
  void loadIndexes(sqlite3* db);
  void loadProcedures(sqlite3* db);

  CatalogVersion version_;
  template <typename T>
  using ByName = std::unordered_map<std::string, T, NameHash, NameEqual>;
  ByName<TableInfo> tables_;
  ByName<std::unique_ptr<ProcedureInfo>> procedures_;
};

}  // namespace goodsbook::engine
