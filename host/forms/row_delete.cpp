#include "host/forms/row_delete.h"

#include "host/U_function.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

void deleteByTemplate(const TFrm_Base_Common& screen, const QString& key) {
  QString statement = screen.bodyParam(bodyparam::deleteStatement);
  if (statement.isEmpty()) throw EAbort();
  statement.replace(u"%S"_s, QuotedStr(key));
  if (ExecSql(screen.moduleCode(), key, u"Delete"_s, statement) != "Y"_L1) throw EAbort();
}

QString nameFieldOf(const TFrm_Base_Common& screen, const RecordSet& rows) {
  const QString declared = screen.bodyParam(bodyparam::nameField);
  if (!declared.isEmpty()) return declared;
  const int key = rows.fieldIndex(screen.bodyParam(bodyparam::keyField));
  return key >= 0 && key + 1 < rows.fieldCount() ? rows.field(key + 1).name : QString();
}

QString rowName(const TFrm_Base_Common& screen, const RecordSet& rows) {
  const QString code = rows.text(screen.bodyParam(bodyparam::keyField));
  const QString nameField = nameFieldOf(screen, rows);
  return nameField.isEmpty() ? code : code + u' ' + rows.text(nameField);
}

}  // namespace goodsbook
