#pragma once

#include <QStringList>

namespace goodsbook {

// `goodsbook drive`: commands from standard input, replies on standard output. Needs a running QApplication.
// 0, or 2 for arguments that cannot be used.
int runDrive(const QStringList& arguments);

}  // namespace goodsbook
