#pragma once

#include <vector>

#include "schema/sample/catalogue.h"
#include "schema/sample/sample.h"

namespace goodsbook::sample {

// Writes the products with all that hangs on them, and gives those that purchase receipts are made of: the
// first ones, without stock and history.
std::vector<Product> writeProducts(const Tools& tools, const Goods& goods);

void writeReceipts(const Tools& tools, const std::vector<Product>& products);

}  // namespace goodsbook::sample
