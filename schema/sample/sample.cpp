#include "schema/sample/sample.h"

#include "schema/sample/organisation.h"
#include "schema/sample/products.h"

namespace goodsbook::sample {

void sampleGoods(const Tools& tools, const Goods& goods) {
  writeOrganisation(tools, goods);
  writePartners(tools);
  writeReceipts(tools, writeProducts(tools, goods));
}

}  // namespace goodsbook::sample
