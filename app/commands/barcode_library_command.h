#pragma once

#include <QStringList>

namespace goodsbook {

// `goodsbook barcode-library build FILE.csv` makes the offline barcode library of a program folder from a
// table; `look BARCODE` prints what it knows of a barcode. 0; 1 when that fails or nothing is known; 2 for
// arguments that cannot be used.
int runBarcodeLibraryCommand(const QStringList& arguments);

}  // namespace goodsbook
