#pragma once

#include <QStringList>

namespace goodsbook {

// `goodsbook copy`: every row of one database into another, empty one, a file or on a server. Gives the exit
// status.
int runCopyCommand(const QStringList& arguments);

}  // namespace goodsbook
