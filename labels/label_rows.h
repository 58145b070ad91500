#pragma once

#include "host/controls/TDBGridEh.h"
#include "host/data/record_set.h"

namespace goodsbook::labelrows {

// The fields of the set of labels, in its file's order.
std::vector<Field> fields();

// Whether `rows` are such a set; a file may hold other rows.
bool isSet(const RecordSet& rows);

// Appends `count` labels for the current row of `source`, each posted; none for a count of 0 or less.
void append(RecordSet& labels, const RecordSet& source, int count);

// Removes all rows.
void clear(RecordSet& rows);

// Removes the current row, or, after a question, the rows picked in the grid, in the order of picking; the
// picks are cleared in any case.
void removePicked(TDBGridEh& grid, RecordSet& rows);

}  // namespace goodsbook::labelrows
