#include "host/U_linkedit.h"

#include <QCoreApplication>

#include "host/controls/TDBGridEh.h"
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
  // No screen makes the rows of these tables.
  if (auto* grid = list->findChild<TDBGridEh*>(u"DBGridEh"_s); grid && rows.isEmpty()) {
    grid->setEmptyText(
        QCoreApplication::translate("Lookup", "还没有可选的%1。新库可由管理员在“系统”菜单中建立常用资料")
            .arg(nameTitle));
  }
}

}  // namespace goodsbook
