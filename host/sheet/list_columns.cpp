#include "host/sheet/list_columns.h"

#include <QHeaderView>

namespace goodsbook {

std::vector<ShownColumn> shownColumns(const TDBGridEh& grid) {
  std::vector<ShownColumn> shown;
  const QHeaderView& header = *grid.horizontalHeader();
  for (int position = 0; position < header.count(); ++position) {
    const int index = header.logicalIndex(position);
    if (header.isSectionHidden(index) || index >= static_cast<int>(grid.columns().size())) continue;
    const QString title = grid.model()->headerData(index, Qt::Horizontal, Qt::DisplayRole).toString();
    shown.push_back({index, title, header.sectionSize(index)});
  }
  return shown;
}

}  // namespace goodsbook
