#pragma once

#include <QString>
#include <cstdint>

namespace goodsbook {

enum class FieldType : std::uint8_t { Text, Integer, Float, Boolean, DateTime, Blob };

struct Field {
  QString name = {};
  FieldType type = FieldType::Text;
  int size = 0;                // characters of a text field, 0 for no limit
  QString label = {};          // heading where a column gives none of its own
  QString displayFormat = {};  // numbers "0.00", "0.000000", "#,##0.00"; date-times "yyyy-MM-dd HH:mm:ss";
                               // empty for the type's own
};

}  // namespace goodsbook
