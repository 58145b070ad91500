#pragma once

#include <functional>
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

// Ledger accounts 1001 and 1002, the home currency, units, payment and delivery methods, region 01. The
// database holds nothing but what the schema's script puts there.
void startingSet(const Tools& tools);

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
