#pragma once

#include <span>
#include <string>

#include "engine/row.h"

// The groups of figures. Each prints its lines and gives the number of targets missed.
namespace goodsbook::benchmarks {

// For batches whose results nobody reads.
class Ignore : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

// The list of a million products: reading it into a record set, its memory, a contains-filter over it.
int listFigures(const std::string& databaseFile);

// One saved product: the whole batch, and its translation alone. Writes to the file.
int saveFigures(const std::string& databaseFile);

// The same list in the grid: its first rows, turning pages, sorting by each title, and changing one product
// with all of them shown. Writes to the file.
int gridFigures(const std::string& databaseFile);

// Labels with bar codes to a PDF.
int labelFigures();

// New products from the spreadsheets in a folder, through the dialog.
int importFigures(const std::string& sheets);

// A list of that many products on a server, through ODBC. Left out, with a word why, where no server can be
// started.
int serverFigures(int products);

// What the product list sends for a user who may see costs, and for the filter's contains condition.
std::string productList();
std::string productListContaining(const std::string& text);

// What the product editor sends when a product with one unit is changed; `round` makes its values differ.
std::string productSave(const std::string& code, int round);

}  // namespace goodsbook::benchmarks
