#pragma once

#include <QString>

#include "host/forms/Base_common.h"

namespace goodsbook {

// Runs the screen's delete statement (body parameter) for the row with this key: %S becomes the quoted key. A
// failure is raised; a screen without such a statement deletes nothing and raises EAbort.
void deleteByTemplate(const TFrm_Base_Common& screen, const QString& key);

// What a question calls the current row of `rows`: its key and its name.
QString rowName(const TFrm_Base_Common& screen, const RecordSet& rows);

// The column that names a row: the body parameter, else the one behind the key field.
QString nameFieldOf(const TFrm_Base_Common& screen, const RecordSet& rows);

}  // namespace goodsbook
