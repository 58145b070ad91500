#pragma once

#include <QStringList>

namespace goodsbook {

// goodsbook init --database FILE --sample N [--force]: makes a database with the starting set of a shop and,
// for N above 0, a whole sample shop of N products. An existing file is refused, with --force replaced once
// the new one is complete. Gives the exit status.
int runInitCommand(const QStringList& arguments);

}  // namespace goodsbook
