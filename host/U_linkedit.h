#pragma once

#include <QString>

#include "host/data/record_set.h"
#include "host/export.h"

class QLineEdit;

namespace goodsbook {

// Drops a hint list below `edit`, filled from `table` where `condition` holds: codes (idField, under idTitle)
// and names (nameField, under nameTitle). The chosen code goes into the edit. `rows` is the list's record
// set.
GOODSBOOKHOST_EXPORT void CommonHint(QLineEdit* edit, RecordSet& rows, const QString& nameField,
                                     const QString& condition, const QString& table, const QString& nameTitle,
                                     const QString& idField, const QString& idTitle);

}  // namespace goodsbook
