#include "host/forms/body_params.h"

namespace goodsbook::bodyparam {

QStringList make(std::initializer_list<std::pair<Position, QString>> texts) {
  QStringList list(count);
  for (const auto& [position, text] : texts) list[position] = text;
  return list;
}

}  // namespace goodsbook::bodyparam
