#pragma once

#include <QStringList>

namespace goodsbook {

// The program itself: log-in, then the main window until it is closed. Needs a running QApplication. 0, or 2
// for arguments that cannot be used.
int runProgram(const QStringList& arguments);

}  // namespace goodsbook
