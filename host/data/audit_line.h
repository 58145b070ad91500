#pragma once

#include <QString>

#include "host/export.h"

namespace goodsbook {

// What the audit table keeps of a save beside its time and its statements.
struct AuditLine {
  QString user, module, key, operation;
};

// The statement that writes the line. `token` names this one save for good; empty where nobody will ask for
// it.
GOODSBOOKHOST_EXPORT QString auditStatement(const AuditLine& line, const QString& batch,
                                            const QString& token);

}  // namespace goodsbook
