#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "host/data/record_set.h"
#include "tests/host/data/memory_rows.h"

namespace goodsbook::test {

// Units of measure as a list loads them.
inline std::vector<engine::Column> unitColumns() {
  return {{"dw_id", engine::Type::Text, 2}, {"dw_name", engine::Type::Text, 6},
          {"n", engine::Type::Integer},     {"abase", engine::Type::Float},
          {"t", engine::Type::Bit},         {"bdate", engine::Type::DateTime},
          {"pict", engine::Type::Blob}};
}

inline MemoryRow unitRow(const std::string& id, Value name, std::int64_t n) {
  return MemoryRow({id, std::move(name), n, static_cast<double>(n) + 0.5, std::int64_t{n % 2},
                    std::int64_t{n * 1000}, std::string("\x01\x00", 2)});
}

inline void loadUnits(RecordSet& rows, const std::vector<std::string>& ids) {
  rows.beginLoad(unitColumns());
  std::int64_t n = 0;
  for (const auto& id : ids) {
    ++n;
    rows.appendLoaded(unitRow(id, id + "名", n));
  }
  rows.endLoad();
}

inline QString column(const RecordSet& rows, const QString& field) {
  QStringList texts;
  for (int row = 0; row < rows.rowCount(); ++row) texts += rows.textAt(row, rows.fieldIndex(field));
  return texts.join(u' ');
}

}  // namespace goodsbook::test
