#pragma once

#include <QStringList>

namespace goodsbook {

// `goodsbook tour --out DIR [--database FILE | --server ADDRESS]`: a picture of every screen, on a shop with
// sample data when no database is named. Needs a running QApplication. Prints what it wrote; 1 when something
// did not work, 2 for arguments that cannot be used.
int runTour(const QStringList& arguments);

}  // namespace goodsbook
