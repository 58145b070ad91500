#pragma once

#include <string>
#include <vector>

namespace goodsbook::schema {

struct Table {
  std::string name;
  std::vector<std::string> columns;
  std::string identity;  // the column that numbers itself; empty where there is none
};

// The tables that script() makes, in its order.
const std::vector<Table>& tables();

}  // namespace goodsbook::schema
