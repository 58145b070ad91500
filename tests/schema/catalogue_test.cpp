#include "schema/sample/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "schema/sample/barcode.h"
#include "schema/sample/units.h"

namespace goodsbook::sample {
namespace {

std::vector<Product> products(int count) {
  Catalogue catalogue;
  std::vector<Product> result;
  for (int i = 0; i < count; ++i) result.push_back(catalogue.next());
  return result;
}

std::size_t characters(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::ranges::count_if(utf8, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

TEST(Barcode, CheckDigitsAreThoseOfKnownCodes) {
  EXPECT_EQ(ean13CheckDigit("400638133393"), '1');
  EXPECT_EQ(ean13CheckDigit("690000000000"), '7');
  EXPECT_EQ(ean13(12345, 678), "6912345006781");
}

TEST(Catalogue, EveryBarcodeIsUniqueAndEveryEanValid) {
  std::set<std::string> seen;
  int eans = 0;
  for (const Product& product : products(20'000)) {
    std::vector<std::string> codes;
    for (const ProductUnit& unit : product.units) codes.push_back(unit.barcode);
    if (!product.extraBarcode.empty()) codes.push_back(product.extraBarcode);
    for (const std::string& code : codes) {
      EXPECT_TRUE(seen.insert(code).second) << code;
      if (code == product.code) continue;
      ASSERT_EQ(code.size(), 13U);
      EXPECT_EQ(code.substr(0, 2), "69");
      EXPECT_EQ(ean13CheckDigit(code), code.back()) << code;
      ++eans;
    }
  }
  EXPECT_GT(eans, 20'000);
}

TEST(Catalogue, EveryProductHasOneMainUnitAndUnitsThatDiffer) {
  for (const Product& product : products(20'000)) {
    EXPECT_EQ(product.units.front().quantity, 1);
    std::set<std::string_view> units;
    for (const ProductUnit& unit : product.units) {
      EXPECT_TRUE(units.insert(unit.code).second) << product.code;
      EXPECT_EQ(unit.quantity == 1, &unit == &product.units.front()) << product.code;
      EXPECT_LT(unit.purchase, unit.retail) << product.code;
      EXPECT_LE(unit.member, unit.retail) << product.code;
    }
    EXPECT_EQ(product.packName.empty(), product.packSize == 1);
    if (!product.packName.empty()) {
      EXPECT_EQ(product.units.back().quantity, product.packSize);
      EXPECT_EQ(unitName(product.units.back().code), product.packName);
    }
  }
}

TEST(Catalogue, TextsFitTheirColumns) {
  for (const Product& product : products(20'000)) {
    EXPECT_LE(characters(product.name), 40U) << product.name;
    EXPECT_LE(characters(product.specification), 40U);
    EXPECT_LE(characters(product.origin), 50U);
  }
}

TEST(Catalogue, NamesWithSpecificationsAreRarelyMetTwice) {
  std::set<std::string> seen;
  for (const Product& product : products(20'000)) seen.insert(product.name + "/" + product.specification);
  EXPECT_GT(seen.size(), 19'500U);
}

TEST(Catalogue, EveryLowestCategoryHasAnAssortment) {
  std::set<std::string_view> lowest, offered, all;
  for (const Category& category : categories()) {
    EXPECT_TRUE(all.insert(category.code).second) << category.code;
    if (category.code.size() > 2) {
      EXPECT_TRUE(all.contains(category.code.substr(0, category.code.size() - 1))) << category.code;
    }
    if (category.code.size() == 4) lowest.insert(category.code);
  }
  for (const Assortment& assortment : assortments()) offered.insert(assortment.category);
  EXPECT_EQ(lowest, offered);
}

}  // namespace
}  // namespace goodsbook::sample
