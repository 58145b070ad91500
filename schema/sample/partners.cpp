#include "schema/sample/goods_table.h"
#include "schema/sample/organisation.h"
#include "schema/sample/random.h"
#include "schema/sample/rows.h"

namespace goodsbook::sample {
namespace {

constexpr int customerCount = 60;

constexpr std::string_view surnames[] = {"沈", "韩", "杨", "朱", "秦", "许", "何", "吕",
                                         "施", "张", "孔", "曹", "严", "华", "金", "魏",
                                         "陶", "姜", "谢", "邹", "喻", "柏", "水", "章"};
constexpr std::string_view givenNames[] = {"建国", "小芳", "志远", "雨晴", "文博", "秀兰", "海涛", "丽娟",
                                           "子涵", "伟民", "春燕", "立新", "晓东", "佳怡", "永强", "桂英"};
constexpr std::string_view streets[] = {"青石街", "望河路", "柳荫路", "桂花弄",
                                        "南塘路", "学府路", "东升街", "长堤路"};
constexpr std::string_view shopKinds[] = {"便利店", "小超市", "食堂",   "餐馆",
                                          "粮油店", "生活馆", "小卖部", "茶楼"};
constexpr std::string_view tradeKinds[] = {"食品商行", "百货经营部", "酒水批发部", "粮油商行", "日化经营部"};
// Regions that partners are spread over, the home region most of all.
constexpr std::string_view regions[] = {"01",   "01",   "01",   "0101", "0102",
                                        "0103", "0201", "0202", "0301", "0302"};
constexpr std::string_view salespeople[] = {"1005", "1006", "1007"};
constexpr std::string_view deliveries[] = {"01", "02", "02", "03"};

struct Account {
  std::string_view code, name;
  int kind;
  std::string_view number, bank, ledger;
  std::int64_t openingCents;
};
constexpr Account accountTable[] = {
    {"01", "收银台现金", 0, "", "", "100101", 200000},
    {"02", "备用金", 0, "", "", "100102", 500000},
    {"03", "基本户", 1, "330100000000010001", "样例银行柳荫路支行", "100201", 35826045},
    {"04", "一般户", 1, "330100000000010002", "样例银行望河路支行", "100202", 8210000},
    {"05", "扫码收款户", 1, "330100000000010003", "样例银行青石街支行", "100203", 1250080},
    {"06", "往来冲账", 2, "", "", "", 0},
};

struct Currency {
  std::string_view code, name, note, rate;
};
constexpr Currency currencyTable[] = {
    {"02", "美元", "", "7.1"}, {"03", "港币", "", "0.9123"}, {"04", "欧元", "", "7.75"}};

struct Partner {
  std::string code, name, fullName, salesperson, account;
};

void writePartner(const Tools& tools, Rows& rows, Random& random, const Partner& partner) {
  const int opened = lastDay - random.between(30, 1500);
  const int changed = opened + random.below(lastDay - opened + 1);
  const int hour = 9 * 3600 + random.below(8 * 3600);
  const std::string contact = std::string(random.pick(surnames)) + std::string(random.pick(givenNames));
  const std::string address =
      std::string(random.pick(streets)) + std::to_string(random.between(1, 300)) + "号";
  rows.text(partner.code)
      .text(partner.name)
      .text(tools.initials(partner.name))
      .text(partner.fullName)
      .text(random.oneIn(6) ? "2" : "1")
      .text(random.pick(regions))
      .text(random.pick(deliveries))
      .text(partner.salesperson)
      .text(partner.account)
      .time(opened, hour)
      .time(changed, hour)
      .text(contact)
      .text("0571-555" + padded(random.below(100'000), 5))
      .text("13" + padded(random.below(1'000'000'000), 9))
      .text("")
      .text(address)
      .text("partner" + partner.code + "@example.com")
      .text(random.oneIn(9) ? "月底对账" : "")
      .text(random.oneIn(4) ? "www.example.com" : "")
      .end();
}

// The account's number as the program draws it, without year and month.
std::string accountSerial(int index) {
  return padded(index + 1, 6);
}

constexpr std::string_view columns =
    " (KH_GYS_ID,KG_NAME,PYM,FULL_NAME,GRADE,ADDR_ID,SEND_ID,KM_IDA,KM_IDB,BDATE,EDATE,FZR,TEL,TEL1,FAX,ADDR,EMAIL,"
    "NOTE,WEB)";

}  // namespace

std::string supplierId(int index) {
  return "G" + padded(index + 1, 4);
}

void writePartners(const Tools& tools) {
  Random random(1102);
  Rows customers(tools, "D1102" + std::string(columns));
  for (int i = 0; i < customerCount; ++i) {
    const std::string name = std::string(random.pick(surnames)) + "记" +
                             std::string(random.pick(givenNames)) + std::string(random.pick(shopKinds));
    writePartner(tools, customers, random,
                 {"K" + padded(i + 1, 4), name, name, std::string(random.pick(salespeople)),
                  "2131" + accountSerial(i)});
  }
  customers.flush();

  Rows suppliers(tools, "D1103" + std::string(columns));
  for (int i = 0; i < supplierCount; ++i) {
    const std::string name =
        std::string(brands()[static_cast<std::size_t>(i)]) + std::string(random.pick(tradeKinds));
    const std::string serial = accountSerial(i);
    writePartner(tools, suppliers, random,
                 {supplierId(i), name, name + "(个体)", "2401" + serial, "1151" + serial});
  }
  suppliers.flush();

  Rows drawn(tools, "SYS_NOID (MODULE,PREFIX,SERIAL_LENGTH,LAST_NO)");
  drawn.text("113").text("").number(0).number(customerCount).end();
  drawn.text("114").text("").number(0).number(supplierCount).end();
  drawn.flush();

  Rows accounts(tools, "D1010 (JY_ID,JY_NAME,PYM,CLASSID,YH_NUM,YH_NAME,KM_ID,QCMONEY)");
  for (const Account& account : accountTable)
    accounts.text(account.code)
        .text(account.name)
        .text(tools.initials(account.name))
        .number(account.kind)
        .text(account.number)
        .text(account.bank)
        .text(account.ledger)
        .money(account.openingCents)
        .end();
  accounts.flush();

  Rows currencies(tools, "D1001 (hb_id,hb_name,pym,hb_note,hb_bw,hb_hl)");
  for (const Currency& currency : currencyTable)
    currencies.text(currency.code)
        .text(currency.name)
        .text(tools.initials(currency.name))
        .text(currency.note)
        .number(0)
        .raw(currency.rate)
        .end();
  currencies.flush();
}

}  // namespace goodsbook::sample
