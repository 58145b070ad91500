#pragma once

#include "tests/engine/support/statement_row.h"

// A small shop, for the statements that the screens send to it.
namespace goodsbook::engine::test {

// Runs the row on a copy of the shop.
void expectAnswer(const StatementRow& row);

}  // namespace goodsbook::engine::test
