#pragma once

#include "schema/sample/sample.h"

namespace goodsbook {

class Database;

// How schema/sample writes into a database: as its owner, initials from the host.
sample::Tools sampleTools(Database& database);

// Whether none of the tables concerned has a row.
bool isEmptyShop(Database& database);

// On the first start of an empty shop: asks, and puts there what a new shop starts with. Asks again at the
// next start as long as none of the tables concerned has a row.
void offerStartingSet(Database& database);

}  // namespace goodsbook
