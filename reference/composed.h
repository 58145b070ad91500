#pragma once

#include <QHash>
#include <QString>

#include "host/forms/Base_common.h"

// What the editors of the reference tables share: statements put together from the fields, and the check of a
// new code.
namespace goodsbook::reference {

using Values = QHash<QString, QString>;

// A statement with its places filled from left to right, so that braces in a value stay what they are:
// "{name}" stands for values[name] if there is such a value, else for the text of that element; "{q:name}"
// for the same in single quotes with inner ones doubled. Without q: values go in as typed.
QString composed(const QString& form, const TFrm_Base_Common& screen, const Values& values);

// On leaving a code: blank and ill-formed codes are refused, and one that `uniqueness` + code + "'" finds,
// with the message `taken`. `scratch` is the screen's record set for look-ups.
void checkNewCode(TFrm_Base_Common& screen, RecordSet& scratch, const QString& element,
                  const QString& caption, const QString& uniqueness, const QString& taken);

}  // namespace goodsbook::reference
