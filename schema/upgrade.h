#pragma once

#include "engine/connection.h"

namespace goodsbook::schema {

// Brings a database to the version of this program: an empty one gets all tables and the user ADMIN (active,
// empty password), an older one runs the missing steps, each in a transaction of its own. Several programs
// may do so at the same time; a database that is up to date takes no lock. Throws SqlError; number 948 when
// the database was made by a newer version of the program.
void prepare(engine::Connection& connection);

}  // namespace goodsbook::schema
