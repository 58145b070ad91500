#include <algorithm>
#include <cstdlib>

#include "schema/sample/rows.h"
#include "schema/sample/sample.h"
#include "schema/sample/units.h"

namespace goodsbook::sample {
namespace {

struct CodeName {
  std::string_view code;
  std::string_view name;
};

constexpr UnitName unitTable[] = {
    {"01", "瓶"}, {"02", "箱"}, {"03", "袋"},   {"04", "盒"}, {"05", "包"}, {"06", "个"}, {"07", "支"},
    {"08", "罐"}, {"09", "桶"}, {"10", "千克"}, {"11", "条"}, {"12", "件"}, {"13", "套"}, {"14", "双"},
    {"15", "提"}, {"16", "台"}, {"17", "卷"},   {"18", "块"}, {"19", "本"}, {"20", "杯"},
};

constexpr CodeName ledgerTable[] = {
    {"1001", "库存现金"},
    {"100101", "库存现金-收银台"},
    {"100102", "库存现金-备用金"},
    {"1002", "银行存款"},
    {"100201", "银行存款-基本户"},
    {"100202", "银行存款-一般户"},
    {"100203", "银行存款-扫码收款"},
};

constexpr CodeName deliveryTable[] = {{"01", "自提"}, {"02", "送货上门"}, {"03", "物流托运"}, {"04", "快递"}};

constexpr CodeName paymentTable[] = {{"01", "现金"}, {"02", "银行转账"}, {"03", "扫码支付"},
                                     {"04", "刷卡"}, {"05", "货到付款"}, {"06", "月结"}};

template <typename Table>
void fillCodes(const Tools& tools, std::string_view tableAndColumns, const Table& table) {
  Rows rows(tools, tableAndColumns);
  for (const auto& [code, name] : table) rows.text(code).text(name).text(tools.initials(name)).end();
  rows.flush();
}

void fillAccounts(const Tools& tools) {
  Rows ledger(tools, "D6801 (km_id,km_name)");
  for (const auto& [code, name] : ledgerTable) ledger.text(code).text(name).end();
  ledger.flush();
}

void fillCurrency(const Tools& tools) {
  Rows currency(tools, "D1001 (hb_id,hb_name,pym,hb_note,hb_bw,hb_hl)");
  currency.text("01").text("人民币").text(tools.initials("人民币")).text("本位币").number(1).number(1).end();
  currency.flush();
}

void fillRegion(const Tools& tools) {
  Rows region(tools, "D1002 (addr_ID,addr_NAME,addr_GL,addr_TEL,addr_ADDR,addr_NOTE,OID)");
  region.text("01").text("本市").text("店长").text("").text("").text("").text("Z").end();
  region.flush();
}

void fill(const Tools& tools, StartingPart part) {
  switch (part) {
    case StartingPart::Accounts:
      return fillAccounts(tools);
    case StartingPart::Currency:
      return fillCurrency(tools);
    case StartingPart::Units:
      return fillCodes(tools, "D1003 (dw_id,dw_name,pym)", unitTable);
    case StartingPart::DeliveryMethods:
      return fillCodes(tools, "D1011 (SEND_ID,SEND_NAME,PYM)", deliveryTable);
    case StartingPart::PaymentMethods:
      return fillCodes(tools, "D1012 (FF_ID,FF_NAME,PYM)", paymentTable);
    case StartingPart::Region:
      return fillRegion(tools);
  }
}

}  // namespace

std::span<const UnitName> unitNames() {
  return unitTable;
}

std::string_view unitName(std::string_view code) {
  return std::ranges::find(unitTable, code, &UnitName::code)->name;
}

std::string_view tableOf(StartingPart part) {
  switch (part) {
    case StartingPart::Accounts:
      return "D6801";
    case StartingPart::Currency:
      return "D1001";
    case StartingPart::Units:
      return "D1003";
    case StartingPart::DeliveryMethods:
      return "D1011";
    case StartingPart::PaymentMethods:
      return "D1012";
    case StartingPart::Region:
      return "D1002";
  }
  std::abort();
}

void startingSet(const Tools& tools, std::span<const StartingPart> parts) {
  for (const StartingPart part : parts) fill(tools, part);
}

}  // namespace goodsbook::sample
