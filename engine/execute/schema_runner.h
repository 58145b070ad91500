#pragma once

#include "engine/catalog/catalog.h"
#include "engine/execute/session.h"
#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// Runs a statement that defines something: CREATE TABLE, CREATE INDEX, ALTER TABLE ADD, DROP, CREATE
// PROCEDURE. What SQLite cannot hold as a server does is refused by name.
void runDefinition(Session& session, const Catalog& catalog, const Statement& statement);

}  // namespace goodsbook::engine
