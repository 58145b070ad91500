#pragma once

#include <vector>

#include "host/data/row_table.h"

namespace goodsbook {

// Sorts rows by one field: nulls first, numbers by value, text without regard to case, blobs by their bytes.
// Stable in both directions; descending puts nulls last.
void sortRows(const RowTable& table, int field, bool descending, std::vector<RowRef>& rows);

}  // namespace goodsbook
