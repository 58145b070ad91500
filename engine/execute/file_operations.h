#pragma once

#include <filesystem>

struct sqlite3;

namespace goodsbook::engine {

class Session;

// A checked copy of the database; the target appears only when it is complete. Error 3201 when the target
// exists or cannot be written.
void copyDatabase(sqlite3* source, const std::filesystem::path& target);

// See Connection::settle().
bool settleLog(Session& session);

// Throws 5172 with the first faults that are found.
void requireIntact(sqlite3* db);

}  // namespace goodsbook::engine
