#include "schema/sample/products.h"

#include <unordered_map>

#include "schema/sample/organisation.h"
#include "schema/sample/rows.h"

namespace goodsbook::sample {
namespace {

constexpr int pictureCount = 36;
constexpr int extrasLimit = 2000;   // products with further bar codes, and with prices of their own in a shop
constexpr int historyLimit = 1000;  // products with a change history
constexpr int receiptProducts = 400;
constexpr int progressStep = 500;

// Statements that look a unit row up, sent some at a time.
class Statements {
 public:
  explicit Statements(const Tools& tools) : tools_(tools) {}
  void add(const std::string& statement) {
    batch_ += statement + "\n";
    if (++count_ % 200 == 0) flush();
  }
  void flush() {
    if (!batch_.empty()) tools_.execute(batch_);
    batch_.clear();
  }

 private:
  const Tools& tools_;
  int count_ = 0;
  std::string batch_;
};

std::string mainUnitOf(std::string_view code) {
  return " from D1801DW where WL_ID=" + quoted(code) + " and T=1";
}

class Writer {
 public:
  Writer(const Tools& tools, const Goods& goods) : tools_(tools), goods_(goods) {}

  void write(const Product& product) {
    header(product);
    units(product);
    stock(product);
    extras(product);
    if (product.changedDay != 0 && historyCount_ < historyLimit) history(product);
  }

  // What needs the rows above to be there.
  void finish(const std::vector<Product>& first) {
    for (Rows* rows : {&headers_, &units_, &stock_, &history_}) rows->flush();
    for (const std::string& statement : later_) statements_.add(statement);
    // Some bar codes that two products claim, for the list to warn of.
    for (const std::size_t index : {10U, 20U, 30U}) {
      if (index + 7 >= first.size()) break;
      const Product& owner = first[index];
      statements_.add("insert into D1801DWTM (ADW,TM) select adw," + quoted(owner.units.front().barcode) +
                      mainUnitOf(first[index + 7].code));
      statements_.add("update D1801 set TMC=2 where WL_ID=" + quoted(owner.code));
    }
    if (goods_.makePicture) pictures(first);
    statements_.flush();
  }

 private:
  void header(const Product& product) {
    const bool changed = product.changedDay != 0;
    const std::int64_t quantity = product.stockQuantity();
    headers_.text(product.code)
        .text(product.name)
        .text(product.specification)
        .number(product.valid ? 1 : 0)
        .number(product.negativeStock ? 1 : 0)
        .text(product.category)
        .money(product.cost)
        .signedAmount(product.cost * quantity)
        .signedAmount(quantity * 100)
        .text(product.user)
        .number(1)
        .text(product.note)
        .text(product.origin)
        .text(initials(product.name))
        .number(product.packSize)
        .text(product.packName)
        .number(static_cast<int>(product.units.size()))
        .number(1)
        .time(product.createdDay, secondOfDay(product))
        .timeOrNull(changed ? std::optional(product.changedDay) : std::nullopt, secondOfDay(product))
        .end();
  }

  void units(const Product& product) {
    for (std::size_t i = 0; i < product.units.size(); ++i) {
      const ProductUnit& unit = product.units[i];
      units_.number(i == 0 ? 1 : 0)
          .text(product.code)
          .text(unit.code)
          .text(unit.barcode)
          .number(unit.quantity)
          .money(unit.retail)
          .money(unit.member)
          .money(unit.wholesale);
      for (const std::int64_t price : unit.reference) units_.money(price);
      units_.money(unit.purchase).end();
    }
  }

  void stock(const Product& product) {
    for (const Stock& place : product.stock)
      stock_.text(product.code)
          .text(place.warehouse)
          .signedAmount(std::int64_t{place.quantity} * 100)
          .money(product.cost)
          .text("A" + padded(product.index % 40 + 1, 2))
          .number(0)
          .time(product.createdDay, 0)
          .number(0)
          .number(0)
          .number(product.negativeStock ? 1 : 0)
          .end();
  }

  void extras(const Product& product) {
    if (!product.extraBarcode.empty() && extraCount_++ < extrasLimit)
      later_.push_back("insert into D1801DWTM (ADW,TM) select adw," + quoted(product.extraBarcode) +
                       mainUnitOf(product.code));
    if (product.index % 30 == 3 && product.index / 30 < extrasLimit) {
      const ProductUnit& unit = product.units.front();
      later_.push_back("insert into D1801DWSJ (ADW,CK_ID,SJ,VIPSJ) select adw,N'0202'," +
                       cents(unit.retail + 10) + "," + cents(unit.member + 10) + mainUnitOf(product.code));
    }
  }

  // The last row shows the product as it is now, those before it an older remark and the state before.
  void history(const Product& product) {
    ++historyCount_;
    const int versions = 1 + product.index % 3;
    for (int version = 1; version <= versions; ++version) {
      const bool last = version == versions;
      const int day = product.changedDay -
                      (versions - version) * ((product.changedDay - product.createdDay) / (versions + 1));
      history_.text(product.code)
          .text(product.name)
          .text(product.specification)
          .number(last && !product.valid ? 0 : 1)
          .number(product.negativeStock ? 1 : 0)
          .text(product.category)
          .signedAmount(product.stockQuantity() * 100)
          .money(product.cost)
          .signedAmount(product.cost * product.stockQuantity())
          .text(last ? product.user : "ADMIN")
          .time(day, secondOfDay(product))
          .time(day, secondOfDay(product))
          .number(1)
          .text(last ? product.note : "资料待核对")
          .text(product.origin)
          .end();
    }
  }

  void pictures(const std::vector<Product>& first) {
    for (std::size_t i = 0; i < first.size() && i < pictureCount; ++i)
      statements_.add(
          "update D1801 set pict=" + binary(goods_.makePicture(static_cast<int>(i) + 1, first[i].name)) +
          " where WL_ID=" + quoted(first[i].code));
  }

  // Many products share a name and differ in their specification only.
  const std::string& initials(const std::string& name) {
    const auto [entry, added] = initials_.try_emplace(name);
    if (added) entry->second = tools_.initials(name);
    return entry->second;
  }

  static int secondOfDay(const Product& product) { return 9 * 3600 + product.index * 97 % (9 * 3600); }

  const Tools& tools_;
  const Goods& goods_;
  Rows headers_{
      tools_,
      "D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,T,NOTE,cd,PYM,DW_ZH,DW_J_NAME,dwcount,TMC,BDATE,EDATE)"};
  Rows units_{tools_, "D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,PFJ1,PFJ2,PFJ3,PFJ4,CGJ)"};
  Rows stock_{tools_, "D1802 (WL_ID,CK_ID,KC,DJ,CK_KW,CK_ACCL,BDATE,BEGIN_SL,BEGIN_MONEY,CHECK_KC)"};
  Rows history_{
      tools_,
      "D1801B (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,KC,DJ,money,USER_ID,BDATE,EDATE,T,NOTE,CD)"};
  Statements statements_{tools_};
  std::vector<std::string> later_;
  std::unordered_map<std::string, std::string> initials_;
  int extraCount_ = 0;
  int historyCount_ = 0;
};

}  // namespace

std::vector<Product> writeProducts(const Tools& tools, const Goods& goods) {
  Catalogue catalogue;
  Writer writer(tools, goods);
  std::vector<Product> first;
  for (int i = 0; i < goods.products; ++i) {
    Product product = catalogue.next();
    writer.write(product);
    if (first.size() < receiptProducts) first.push_back(std::move(product));
    if (goods.progress && (i + 1) % progressStep == 0) goods.progress(i + 1);
  }
  writer.finish(first);
  return first;
}

}  // namespace goodsbook::sample
