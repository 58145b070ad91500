#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

// The key under which the offline barcode library keeps a barcode (column C_NO2): its characters 7 to 13 and
// 1 to 6 as numbers in hexadecimal. Empty for fewer than 7 characters, "ZZZZ" where a part is no number.
GOODSBOOKHOST_EXPORT QString offlineKey(const QString& barcode);

}  // namespace goodsbook
