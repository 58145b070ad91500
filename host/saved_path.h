#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

// The path of a file that is to be saved, as a file dialog's `filter` ("电子表格 (*.xlsx);;CSV 文本 (*.csv)")
// wants it: as it is when it ends in a suffix of the filter, else with the first suffix of `chosen`, the part
// of the filter that the user chose, or of all of it when that is empty.
GOODSBOOKHOST_EXPORT QString withSuffix(const QString& path, const QString& filter,
                                        const QString& chosen = {});

}  // namespace goodsbook
