#pragma once

#include <QString>

namespace goodsbook::merge {

// The statements that fold product `folded` into product `kept`, whose unit row is `keptUnit`: stock rows
// where the kept one has none, lines of documents that hold both, all other document lines, and at last the
// folded product's deletion.
QString statements(const QString& kept, const QString& keptUnit, const QString& folded);

}  // namespace goodsbook::merge
