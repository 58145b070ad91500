#pragma once

#include <QStringList>

namespace goodsbook {

// goodsbook sql --database FILE [--create] [--json] [TEXT]: runs T-SQL (of standard input when TEXT is
// missing) with the owner's rights. Lines "go" part it into batches, each a transaction of its own; the first
// failure ends the run. Result sets are printed with a header, fields apart by tabs. Gives the exit status: 1
// when a batch failed.
int runSqlCommand(const QStringList& arguments);

}  // namespace goodsbook
