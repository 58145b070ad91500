#pragma once

#include <string>
#include <string_view>
#include <vector>

// The tables that the program works on, as T-SQL. Batches are ended by a line "go".
namespace goodsbook::schema {

// The version of the tables that this program needs, kept in its table of versions.
int version();
inline constexpr std::string_view versionTable = "SYS_VERSION";

// Makes all tables, SYS_DW and the user ADMIN in an empty database, embedded or on a server.
std::string_view script();

// Brings a database from version `from` to the next one; 1 <= from < version().
std::string_view upgradeStep(int from);

// What brings a database on a server from version `from` up to date, for a tool that runs scripts: each step
// and its mark in SYS_VERSION is one transaction. A step that fails leaves nothing, and the steps behind it
// are not done; nor is anything where the database has another version.
std::string upgradeScript(int from);

struct ScriptBatch {
  std::string_view text;
  int line = 1;  // of the script, 1-based, at which it starts
};

// The batches of a script, which lines "go" end.
std::vector<ScriptBatch> batches(std::string_view script);

}  // namespace goodsbook::schema
