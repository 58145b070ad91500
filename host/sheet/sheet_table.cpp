#include "host/sheet/sheet_table.h"

#include <QCoreApplication>

namespace goodsbook {
namespace {

struct ListExport {
  Q_DECLARE_TR_FUNCTIONS(ListExport)
};

}  // namespace

QString cellText(const SheetTable& table, int row, const SheetColumn& column) {
  if (table.rows.field(column.field).type != FieldType::Boolean)
    return table.rows.textAt(row, column.field, column.format);
  const QVariant flag = table.rows.valueAt(row, column.field);
  if (flag.isNull()) return {};
  return flag.toBool() ? ListExport::tr("是") : ListExport::tr("否");
}

}  // namespace goodsbook
