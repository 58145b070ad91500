#pragma once

#include <vector>

#include "schema/sample/sample.h"

namespace goodsbook {

class Database;

// How schema/sample writes into a database: as its owner, initials from the host.
sample::Tools sampleTools(Database& database);

// The parts of the starting set whose tables have no row yet.
std::vector<sample::StartingPart> missingStartingParts(Database& database);

// Asks whether to put there what is missing of the starting set; tables with rows stay as they are. False
// when nothing is missing, and nothing was asked.
bool offerStartingSet(Database& database);

// The same once for every database, at its first start; later it is a matter of the menu.
void offerStartingSetOnFirstStart(Database& database);

}  // namespace goodsbook
