#pragma once

#include <QStringList>

namespace goodsbook {

// goodsbook schema [--from VERSION]: prints the T-SQL that makes the tables in an empty database of a server,
// or the steps that bring one from VERSION to the present version. Gives the exit status.
int runSchemaCommand(const QStringList& arguments);

}  // namespace goodsbook
