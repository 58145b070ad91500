#pragma once

#include <string>
#include <string_view>

// What a batch needs before it goes to a real server. A batch that the lexer cannot read to its end keeps its
// rest as it is: the server then says what is wrong with it.
namespace goodsbook::engine {

// Texts with characters beyond ASCII become N'…', so that they arrive whatever the server's collation is.
// Lines keep their numbers. Where `now` is given, it takes the place of each GETDATE().
std::string forServer(std::string_view batch, std::string_view now = {});

// The first word of the batch that only the owner of a database may send (create, commit, grant, …), as
// written; empty when there is none. Quoted names and texts are no words.
std::string_view ownersWord(std::string_view batch);

// A batch that a server refuses inside a transaction: one that begins with CREATE, ALTER or DROP DATABASE,
// BACKUP, RESTORE or USE.
bool standsOutsideTransactions(std::string_view batch);

}  // namespace goodsbook::engine
