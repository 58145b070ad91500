#pragma once

#include <QString>

#include "host/export.h"

class QWidget;
class QLineEdit;

namespace goodsbook {

// Shows a message through the session's desktop. Kind 5: warning; 2: question, returns 'y' for yes. The
// parent is the active screen.
GOODSBOOKHOST_EXPORT char DISPINFO(const QString& text, int kind);
GOODSBOOKHOST_EXPORT void plainBox(const QString& text, const QString& caption = {});  // kind 0

// Checks on an edit. Each shows its message (kind 5), puts the focus into the edit and throws EAbort.
GOODSBOOKHOST_EXPORT void CheckBlankInstr(
    QLineEdit* edit,
    const QString& caption);  // a code: not empty, no blank in or around it
GOODSBOOKHOST_EXPORT void CheckText(QLineEdit* edit,
                                    const QString& caption);  // no quote, control character or blank

GOODSBOOKHOST_EXPORT QString GETCODE(const QString& nodeText);  // the text before the first blank
GOODSBOOKHOST_EXPORT QString boltos(bool value);                // "1" or "0"
GOODSBOOKHOST_EXPORT QString QuotedStr(const QString& text);    // in single quotes, inner ones doubled

}  // namespace goodsbook
