#pragma once

#include <string_view>

// The tables that the program works on, as T-SQL. Batches are ended by a line "go".
namespace goodsbook::schema {

// The version of the tables that this program needs, kept in SYS_VERSION.
int version();

// Makes all tables, SYS_DW and the user ADMIN in an empty database, embedded or on a server.
std::string_view script();

// Brings a database from version `from` to the next one; 1 <= from < version().
std::string_view upgradeStep(int from);

}  // namespace goodsbook::schema
