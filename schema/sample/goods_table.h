#pragma once

#include <span>
#include <string_view>

// What a shop of everyday goods sells: three levels of categories, and for each of the lowest level the words
// that its products' names and specifications are made of. Lists are separated by blanks.
namespace goodsbook::sample {

struct Category {
  std::string_view code;  // 2, 3 or 4 characters; without its last one a longer code is its parent's
  std::string_view name;
};

struct Assortment {
  std::string_view category;  // a category of the lowest level
  std::string_view goods;
  std::string_view styles;          // "-" for a product without one
  std::string_view specifications;  // the bigger the later
  std::string_view unit;            // code of the main unit, see unit::
  std::string_view pack;            // code of the unit that holds several
  int packSize;
  int lowCents;  // retail prices of the smallest and of the biggest specification
  int highCents;
  bool ownBarcode = false;  // weighed or packed in the shop: the product's code serves as its barcode
};

std::span<const Category> categories();  // parents before children
std::span<const Assortment> assortments();
std::span<const std::string_view> brands();
std::span<const std::string_view> origins();

// Codes of the units that every shop starts with.
namespace unit {
inline constexpr std::string_view bottle = "01", carton = "02", bag = "03", box = "04", pack = "05",
                                  piece = "06", stick = "07", can = "08", bucket = "09", kilogram = "10",
                                  strip = "11", item = "12", set = "13", pair = "14", handle = "15",
                                  machine = "16", roll = "17", block = "18", book = "19", cup = "20";
}  // namespace unit

}  // namespace goodsbook::sample
