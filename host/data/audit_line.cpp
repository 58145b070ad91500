#include "host/data/audit_line.h"

#include "host/data/statement_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

QString auditStatement(const AuditLine& line, const QString& batch, const QString& token) {
  constexpr int userWidth = 10, moduleWidth = 10, keyWidth = 100, operationWidth = 20;
  const bool named = !token.isEmpty();
  return u"insert into SYS_AUDIT (AUDIT_TIME,USER_ID,MODULE,KEY_VALUE,OPERATION,STATEMENT"_s +
         (named ? u",TOKEN"_s : QString()) + u") values (GETDATE(),"_s +
         textLiteral(line.user.left(userWidth)) + u',' + textLiteral(line.module.left(moduleWidth)) + u',' +
         textLiteral(line.key.left(keyWidth)) + u',' + textLiteral(line.operation.left(operationWidth)) +
         u',' + textLiteral(batch) + (named ? u',' + textLiteral(token) : QString()) + u')';
}

}  // namespace goodsbook
