#pragma once

#include <span>
#include <string_view>

#include "schema/sample/sample.h"

// The shop itself and those whom it deals with.
namespace goodsbook::sample {

inline constexpr int lastDay = 20'757;  // 2026-10-31: the sample's youngest document

// The sale and store places that hold stock; the first one is the central store.
std::span<const std::string_view> stockWarehouses();
std::span<const std::string_view> userIds();   // of those who enter products
std::span<const std::string_view> buyerIds();  // staff codes
inline constexpr int supplierCount = 40;
std::string supplierId(int index);

void writeOrganisation(const Tools& tools,
                       const Goods& goods);  // regions, departments, warehouses, staff, users, company
void writePartners(const Tools& tools);      // customers, suppliers, accounts, currencies

}  // namespace goodsbook::sample
