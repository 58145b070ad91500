#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

// Fills an empty database with the data that a new shop starts with, and with a whole shop to try the program
// on. All of it is T-SQL, for an embedded database and for a server, and the same with every run.
namespace goodsbook::sample {

struct Tools {
  std::function<void(std::string_view batch)>
      execute;  // runs one batch, in a transaction of its own, as the owner
  std::function<std::string(std::string_view name)> initials;  // pinyin initials for the PYM columns
};

// What a new shop starts with, a table each: ledger accounts 1001 and 1002, the home currency, units,
// delivery and payment methods, region 01.
enum class StartingPart : std::uint8_t { Accounts, Currency, Units, DeliveryMethods, PaymentMethods, Region };
constexpr std::array allStartingParts{StartingPart::Accounts,       StartingPart::Currency,
                                      StartingPart::Units,          StartingPart::DeliveryMethods,
                                      StartingPart::PaymentMethods, StartingPart::Region};
std::string_view tableOf(StartingPart part);

// The parts' tables have to be empty.
void startingSet(const Tools& tools, std::span<const StartingPart> parts = allStartingParts);

struct Goods {
  int products = 2000;  // 0 to 1,000,000
  // Bytes of a small JPEG or PNG file with that text; none are stored when empty. Index 0 is the company's
  // picture, the products' count from 1.
  std::function<std::string(int index, std::string_view text)> makePicture = {};
  std::function<void(int done)> progress = {};  // called after every some hundred products
};

// The rest of the shop: organisation, partners, users with rights, products with stock and history, purchase
// receipts. Needs the starting set.
void sampleGoods(const Tools& tools, const Goods& goods);

}  // namespace goodsbook::sample
