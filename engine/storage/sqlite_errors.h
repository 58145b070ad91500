#pragma once

#include "engine/error.h"

struct sqlite3;

namespace goodsbook::engine {

// What a server says where SQLite fails for a reason outside the statement: a lock (1222), a full disk
// (1105), a file that cannot be read (823), written (3906), is damaged (5172) or no database (5171), an
// interrupt (3617), too little memory (701). Anything else is 50001 with SQLite's own words, since the engine
// ought to have refused it before.
SqlError sqliteFailure(sqlite3* db, int code);

}  // namespace goodsbook::engine
