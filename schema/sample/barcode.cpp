#include "schema/sample/barcode.h"

#include "schema/sample/rows.h"

namespace goodsbook::sample {

std::string ean13(int maker, int item) {
  std::string code = "69" + padded(maker, 5) + padded(item, 5);
  code += ean13CheckDigit(code);
  return code;
}

}  // namespace goodsbook::sample
