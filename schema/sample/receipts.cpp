#include "schema/sample/organisation.h"
#include "schema/sample/products.h"
#include "schema/sample/rows.h"

namespace goodsbook::sample {
namespace {

constexpr int receiptCount = 40;

struct Line {
  const Product* product = nullptr;
  std::size_t unit = 0;
  int quantity = 0;
  std::int64_t price() const { return product->units[unit].purchase; }
  std::int64_t amount() const { return price() * quantity; }
};

std::vector<Line> linesOf(Random& random, const std::vector<Product>& products) {
  std::vector<Line> lines;
  const auto count = static_cast<std::size_t>(random.between(4, 18));
  const int start = random.below(static_cast<int>(products.size()));
  for (std::size_t i = 0; i < count && i < products.size(); ++i) {
    const Product& product = products[(static_cast<std::size_t>(start) + i) % products.size()];
    const std::size_t unit = random.oneIn(2) ? product.units.size() - 1 : 0;
    lines.push_back({&product, unit, random.between(1, unit == 0 ? 60 : 8)});
  }
  return lines;
}

}  // namespace

void writeReceipts(const Tools& tools, const std::vector<Product>& products) {
  if (products.empty()) return;
  Random random(8202);
  Rows heads(tools, "D8202 (noid,kh_gys_id,ck_id,bdate,edate,send_id,user_id,YW_ID,JY_ID,note,t,sk,sdate)");
  for (int i = 0; i < receiptCount; ++i) {
    const int day = lastDay - (receiptCount - 1 - i) * 2;
    const std::string number = "JH" + shortDate(day) + padded(i + 1, 4);
    const std::string warehouse(random.pick(stockWarehouses()));
    const std::vector<Line> lines = linesOf(random, products);

    std::int64_t total = 0;
    std::string batch;
    for (std::size_t id = 0; id < lines.size(); ++id) {
      const Line& line = lines[id];
      total += line.amount();
      const int pack = line.product->packSize;
      const int pieces = line.quantity * line.product->units[line.unit].quantity;
      batch +=
          "insert into D8202A (noid,id,wl_id,ck_id,sl,dj,money,sl_return,DW_J,DW_L,DW_ZH,note,d8201aid,adw,jdate) "
          "select " +
          quoted(number) + "," + std::to_string(id + 1) + ",WL_ID," + quoted(warehouse) + "," +
          std::to_string(line.quantity) + "," + cents(line.price()) + "," + cents(line.amount()) + ",0," +
          std::to_string(pieces / pack) + "," + std::to_string(pieces % pack) + "," + std::to_string(pack) +
          ",N'',0,adw,'" + dateText(day) + "' from D1801DW where WL_ID=" + quoted(line.product->code) +
          " and DW_ID=" + quoted(line.product->units[line.unit].code) + "\n";
    }
    tools.execute(batch);

    const int second = 8 * 3600 + random.below(9 * 3600);
    heads.text(number)
        .text(supplierId(random.below(supplierCount)))
        .text(warehouse)
        .time(day, second)
        .time(day, second)
        .text(random.oneIn(3) ? "03" : "02")
        .text(random.pick(userIds()))
        .text(random.pick(buyerIds()))
        .text(random.oneIn(4) ? "01" : "03")
        .text(random.oneIn(8) ? "含赠品" : "")
        .number(1)
        .money(random.oneIn(3) ? 0 : total)
        .time(day + 30, 0)
        .end();
  }
  heads.flush();
}

}  // namespace goodsbook::sample
