#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "schema/sample/goods_table.h"
#include "schema/sample/random.h"

namespace goodsbook::sample {

// Prices in cents.
struct ProductUnit {
  std::string_view code;
  std::string barcode;
  int quantity = 1;  // of the main unit
  std::int64_t retail = 0, member = 0, wholesale = 0, purchase = 0;
  std::int64_t reference[4] = {};
};

struct Stock {
  std::string_view warehouse;
  int quantity = 0;
};

struct Product {
  int index = 0;  // from 0
  std::string code, name, specification, extraBarcode;
  std::string_view category, origin, note, user;
  std::vector<ProductUnit> units;  // the main unit first
  int packSize = 1;
  std::string_view packName;  // empty: sold by the main unit alone
  std::int64_t cost = 0;      // of the main unit
  bool valid = true;
  bool negativeStock = false;
  int createdDay = 0, changedDay = 0;  // changedDay 0: never changed
  std::vector<Stock> stock;

  std::int64_t stockQuantity() const;
};

// The products of the shop one after the other. The n-th is the same in a small and in a big shop. No bar
// code occurs twice.
class Catalogue {
 public:
  Catalogue();
  Product next();

  static std::string code(int index);

 private:
  struct Shelf {
    std::vector<std::string_view> goods, styles, specifications;
    int offset = 0;
    int taken = 0;
  };

  void name(Product& product, const Assortment& assortment, Shelf& shelf, int& brand, double& size);
  void price(Product& product, const Assortment& assortment, int brand, double size);
  void keep(Product& product);
  std::string nextBarcode(int brand);

  Random random_{1801};
  int index_ = 0;
  std::vector<Shelf> shelves_;
  std::vector<int> itemsOfBrand_;
};

}  // namespace goodsbook::sample
