#include "host/U_linkedit.h"

#include "host/lookup/picker.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

void CommonHint(QLineEdit* edit, RecordSet& rows, const QString& nameField, const QString& condition,
                const QString& table, const QString& nameTitle, const QString& idField,
                const QString& idTitle) {
  LookupTable hint{.caption = nameTitle, .table = table, .idField = idField, .nameField = nameField};
  hint.idTitle = idTitle;
  hint.nameTitle = nameTitle;
  // Table, condition and headings may differ from call to call: the list of the last call goes.
  delete edit->findChild<LookupPicker*>(u"CommonHint"_s, Qt::FindDirectChildrenOnly);
  auto* list = new LookupPicker(hint, edit, &rows);
  list->setObjectName(u"CommonHint"_s);
  list->dropBelow(edit, condition);
  list->show();
}

}  // namespace goodsbook
