#include "labels/label_rows.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include "host/U_function.h"

using namespace Qt::StringLiterals;

namespace goodsbook::labelrows {

std::vector<Field> fields() {
  const auto tr = [](const char* text) { return QCoreApplication::translate("labels", text); };
  return {{.name = u"WL_ID"_s, .size = 20, .label = tr("商品编号")},
          {.name = u"WL_NAME"_s, .size = 80, .label = tr("商品名称")},
          {.name = u"WL_GG"_s, .size = 30, .label = tr("规格")},
          {.name = u"CLASS_ID"_s, .size = 4, .label = tr("类型代号")},
          {.name = u"CLASS_NAME"_s, .size = 10, .label = tr("类型")},
          {.name = u"DW_ID"_s, .size = 2, .label = tr("单位代号")},
          {.name = u"DW_NAME"_s, .size = 6, .label = tr("主单位")},
          {.name = u"SJ"_s, .type = FieldType::Float, .label = tr("售价")},
          {.name = u"VIPSJ"_s, .type = FieldType::Float, .label = tr("会员价")},
          {.name = u"TM"_s, .size = 30, .label = tr("主条码")},
          {.name = u"CD"_s, .size = 100, .label = tr("产地")},
          {.name = u"WL_YS"_s, .type = FieldType::Boolean, .label = tr("有效")},
          {.name = u"CK_ID"_s, .size = 4, .label = tr("仓库号")},
          {.name = u"CK_NAME"_s, .size = 16, .label = tr("仓库")}};
}

bool isSet(const RecordSet& rows) {
  const std::vector<Field> wanted = fields();
  if (rows.fieldCount() != static_cast<int>(wanted.size())) return false;
  for (int i = 0; i < rows.fieldCount(); ++i) {
    const Field& field = wanted[static_cast<std::size_t>(i)];
    if (rows.field(i).name.compare(field.name, Qt::CaseInsensitive) != 0) return false;
    if (rows.field(i).type != field.type) return false;
  }
  return true;
}

void append(RecordSet& labels, const RecordSet& source, int count) {
  if (count <= 0) return;
  labels.disableControls();
  const auto shown = qScopeGuard([&labels] { labels.enableControls(); });
  for (int label = 0; label < count; ++label) {
    labels.append();
    for (const QString& field :
         {u"tm"_s, u"wl_id"_s, u"wl_name"_s, u"wl_gg"_s, u"dw_name"_s, u"sj"_s, u"vipsj"_s, u"cd"_s}) {
      labels.setValue(field, source.value(field));
    }
    labels.post();
  }
}

void clear(RecordSet& rows) {
  rows.clear();
}

void removePicked(TDBGridEh& grid, RecordSet& rows) {
  if (!rows.isOpen() || rows.isEmpty()) return;
  const std::vector<RecordSet::Bookmark> picked = grid.selectedRows();
  if (picked.empty()) {
    rows.remove();
    return;
  }
  if (DISPINFO(QCoreApplication::translate("labels", "是否删除所选记录"), 2) != 'y') return;
  const auto unpick = qScopeGuard([&grid] { grid.clearSelectedRows(); });
  for (const RecordSet::Bookmark row : picked) {
    if (rows.gotoBookmark(row)) rows.remove();
  }
}

}  // namespace goodsbook::labelrows
