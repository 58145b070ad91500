#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/connection.h"

// A database for a test, and what its batches give, as texts.
namespace goodsbook::engine::test {

using Value = std::optional<std::string>;  // no value is NULL
using Rows = std::vector<std::vector<Value>>;

struct ResultSet {
  std::vector<Column> columns;
  Rows rows;  // numbers without needless digits, bits 0 or 1, "2026-11-20 10:11:12[.123]", "0x01FF"
};

struct Outcome {
  std::vector<ResultSet> sets;
  std::vector<long long> counts;
  std::vector<Diagnostic> notices;
  std::optional<Diagnostic> error;
};

enum class Tables { Cases, Program };  // those of the recorded cases, or those that the program works on

// A file in a temporary folder that goes with the session. The tables are in it.
class Session {
 public:
  explicit Session(Tables tables = Tables::Cases);
  // Begins with a copy of a database file.
  explicit Session(const std::filesystem::path& original);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Runs a batch and tells what came of it; errors are part of that.
  Outcome run(std::string_view batch, Permission permission = Permission::Screens);
  // Runs batches that must succeed.
  void setUp(std::span<const std::string_view> batches);
  // The rows of the only set of a select that must succeed.
  Rows rows(std::string_view select);
  // Puts the first value of `query` in place of each {{query}}.
  std::string filled(std::string batch);

  Connection& connection() { return *connection_; }
  // Another connection to the same file.
  std::unique_ptr<Connection> connect() const;
  const std::filesystem::path& folder() const { return folder_; }

  // What GETDATE() gives: 2026-11-20 10:11:12.
  static std::int64_t now();

 private:
  std::filesystem::path folder_;
  std::unique_ptr<Connection> connection_;
};

// Runs a batch on a connection and tells what came of it.
Outcome runOn(Connection& connection, std::string_view batch, Permission permission = Permission::Screens);

// How a value of a row is written in Rows.
Value valueText(const Row& row, int column, Type type);

}  // namespace goodsbook::engine::test
