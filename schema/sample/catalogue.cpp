#include "schema/sample/catalogue.h"

#include <cmath>
#include <numeric>

#include "schema/sample/barcode.h"
#include "schema/sample/organisation.h"
#include "schema/sample/rows.h"
#include "schema/sample/units.h"

namespace goodsbook::sample {
namespace {

constexpr std::string_view series[] = {"", "经典", "优选", "轻享", "家庭装", "量贩装", "节庆", "新装"};
constexpr std::string_view notes[] = {"", "", "", "", "", "", "", "新品", "季节商品", "常备货"};
constexpr int firstMaker = 20'317;  // the makers' numbers in bar codes, a step apart
constexpr int makerStep = 37;
constexpr int shelfDistance = 211;
constexpr int openingDay = lastDay - 900;

std::vector<std::string_view> words(std::string_view list) {
  std::vector<std::string_view> result;
  while (true) {
    const std::size_t blank = list.find(' ');
    result.push_back(list.substr(0, blank));
    if (blank == std::string_view::npos) return result;
    list.remove_prefix(blank + 1);
  }
}

// A step through 0 … total-1 that meets every number once and looks like chance.
int scattered(int position, int total) {
  std::int64_t step = total * 5 / 8 | 1;
  while (std::gcd(step, static_cast<std::int64_t>(total)) != 1) step += 2;
  return static_cast<int>(position * step % total);
}

// Prices end in a digit that shops like.
std::int64_t shelfPrice(double amount) {
  const auto tens = static_cast<std::int64_t>(amount / 10);
  return std::max<std::int64_t>(tens * 10, 10);
}

std::int64_t percent(std::int64_t amount, int share) {
  return std::max<std::int64_t>((amount * share + 50) / 100, 1);
}

}  // namespace

std::int64_t Product::stockQuantity() const {
  std::int64_t sum = 0;
  for (const Stock& place : stock) sum += place.quantity;
  return sum;
}

Catalogue::Catalogue() : itemsOfBrand_(brands().size(), 0) {
  for (const Assortment& assortment : assortments())
    shelves_.push_back({.goods = words(assortment.goods),
                        .styles = words(assortment.styles),
                        .specifications = words(assortment.specifications),
                        .offset = static_cast<int>(shelves_.size()) * shelfDistance});
}

std::string Catalogue::code(int index) {
  return padded(index + 1, 6);
}

Product Catalogue::next() {
  Product product;
  product.index = index_++;
  product.code = code(product.index);
  // Neighbouring codes come from the same shelf, as goods are entered delivery by delivery.
  const auto shelf = static_cast<std::size_t>(
      scattered(product.index / 4 % static_cast<int>(shelves_.size()), static_cast<int>(shelves_.size())));
  const Assortment& assortment = assortments()[shelf];
  product.category = assortment.category;
  int brand = 0;
  double size = 0;
  name(product, assortment, shelves_[shelf], brand, size);
  price(product, assortment, brand, size);
  keep(product);
  return product;
}

void Catalogue::name(Product& product, const Assortment& assortment, Shelf& shelf, int& brand, double& size) {
  const auto brandCount = static_cast<int>(brands().size());
  const auto goods = static_cast<int>(shelf.goods.size());
  const auto styles = static_cast<int>(shelf.styles.size());
  const auto specifications = static_cast<int>(shelf.specifications.size());
  const int total = brandCount * goods * styles * specifications;
  // Shelves begin at different places, or they would all begin with the same makers.
  int choice = scattered((shelf.taken + shelf.offset) % total, total);
  const auto range = static_cast<std::size_t>(shelf.taken / total) % std::size(series);
  ++shelf.taken;

  const int specification = choice % specifications;
  choice /= specifications;
  const auto kind = static_cast<std::size_t>(choice % goods);
  choice /= goods;
  const auto style = static_cast<std::size_t>(choice % styles);
  brand = choice / styles;

  product.name = brands()[static_cast<std::size_t>(brand)];
  product.name += series[range];
  if (shelf.styles[style] != "-") product.name += shelf.styles[style];
  product.name += shelf.goods[kind];
  product.specification = shelf.specifications[static_cast<std::size_t>(specification)];
  size = specifications == 1 ? 0 : static_cast<double>(specification) / (specifications - 1);
  product.origin = origins()[static_cast<std::size_t>(brand) % origins().size()];
  product.note = assortment.ownBarcode ? "按重量计价" : random_.pick(notes);
}

void Catalogue::price(Product& product, const Assortment& assortment, int brand, double size) {
  const double base =
      assortment.lowCents * std::pow(static_cast<double>(assortment.highCents) / assortment.lowCents, size);
  const std::int64_t retail = shelfPrice(base * random_.between(85, 115) / 100);
  product.cost = percent(retail, random_.between(66, 80));

  const auto addUnit = [&](std::string_view unitCode, int quantity, int discount) {
    ProductUnit added;
    added.code = unitCode;
    added.quantity = quantity;
    added.barcode = assortment.ownBarcode && quantity == 1 ? product.code : nextBarcode(brand);
    added.retail = percent(retail * quantity, discount);
    added.member = percent(added.retail, 95);
    added.wholesale = percent(added.retail, 88);
    constexpr int referenceShares[] = {92, 90, 86, 84};
    for (std::size_t level = 0; level < 4; ++level)
      added.reference[level] = percent(added.retail, referenceShares[level]);
    added.purchase = product.cost * quantity;
    product.units.push_back(std::move(added));
  };
  addUnit(assortment.unit, 1, 100);
  if (!random_.oneIn(3)) return;
  product.packSize = assortment.packSize;
  product.packName = unitName(assortment.pack);
  if (product.packSize >= 12 && product.packSize % 4 == 0 && assortment.unit != unit::handle &&
      random_.oneIn(4))
    addUnit(unit::handle, product.packSize / 4, 98);
  addUnit(assortment.pack, product.packSize, 95);
}

// What the shop itself says about the product: stock, flags, dates, further barcodes.
void Catalogue::keep(Product& product) {
  product.cost = percent(product.cost, random_.between(97, 103));
  product.valid = !random_.oneIn(40);
  product.negativeStock = random_.oneIn(5);
  product.user = random_.pick(userIds());
  product.createdDay = openingDay + random_.below(700);
  if (random_.oneIn(3)) product.changedDay = product.createdDay + random_.between(1, 190);

  const auto places = stockWarehouses();
  const auto home = static_cast<std::size_t>(random_.below(static_cast<int>(places.size())));
  product.stock.push_back({places[home], random_.between(0, 240)});
  if (random_.oneIn(3)) product.stock.push_back({places[(home + 1) % places.size()], random_.between(0, 60)});
  if (product.negativeStock && random_.oneIn(25)) product.stock.back().quantity = -random_.between(1, 6);

  if (random_.oneIn(40)) product.extraBarcode = nextBarcode(random_.below(static_cast<int>(brands().size())));
}

std::string Catalogue::nextBarcode(int brand) {
  return ean13(firstMaker + brand * makerStep, itemsOfBrand_[static_cast<std::size_t>(brand)]++);
}

}  // namespace goodsbook::sample
