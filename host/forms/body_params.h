#pragma once

#include <QString>
#include <QStringList>
#include <initializer_list>
#include <utility>

#include "host/export.h"

// The 17 texts that a list screen gives to itself and to its editor (SetBodyParam). Positions that a screen
// does not use are empty.
namespace goodsbook::bodyparam {

enum Position {
  keyField,         // "wl_id"
  deleteStatement,  // "delete from D1801 Where WL_ID=%S"; %S is the quoted key
  listStatement,    // a select; empty where GetData composes it
  moneyColumns,     // comma list: shown with the price format
  priceColumns,     // comma list: the selling prices among them
  costRight,        // "1": the user may see costs
  parentField,      // trees: the column with the parent's code
  rootValue,        // trees: what stands there at the top level
  nameField,        // the column that names a row; empty: the one behind the key field
  caption,          // of print-outs; empty: the screen's
  spare10,
  spare11,
  spare12,
  spare13,
  spare14,
  spare15,
  spare16,
};
inline constexpr int count = 17;

// The list with these positions set and all others empty.
GOODSBOOKHOST_EXPORT QStringList make(std::initializer_list<std::pair<Position, QString>> texts);

}  // namespace goodsbook::bodyparam
