#include "reference/composed.h"

#include <QRegularExpression>

#include "host/U_function.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook::reference {

QString composed(const QString& form, const TFrm_Base_Common& screen, const Values& values) {
  static const QRegularExpression place(u"\\{(q:)?(\\w+)\\}"_s);
  QString sql;
  qsizetype from = 0;
  for (auto matches = place.globalMatch(form); matches.hasNext();) {
    const QRegularExpressionMatch match = matches.next();
    const QString name = match.captured(2);
    const auto given = values.find(name);
    const QString value = given != values.end() ? *given : screen.text(name);
    sql += QStringView(form).sliced(from, match.capturedStart() - from);
    sql += match.captured(1).isEmpty() ? value : QuotedStr(value);
    from = match.capturedEnd();
  }
  return sql += QStringView(form).sliced(from);
}

void checkNewCode(TFrm_Base_Common& screen, RecordSet& scratch, const QString& element,
                  const QString& caption, const QString& uniqueness, const QString& taken) {
  TCustomDBEditEh* code = screen.edit(element);
  CheckBlankInstr(code, caption);
  screen.CheckBlank(code);
  CheckText(code, caption);
  opensql(scratch, screen.moduleCode(), uniqueness + code->text() + u'\'');
  if (scratch.isEmpty()) return;
  DISPINFO(taken, 5);
  throw EAbort();
}

}  // namespace goodsbook::reference
