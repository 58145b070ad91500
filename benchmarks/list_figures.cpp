#include <cstdint>
#include <memory>

#include "benchmarks/figure.h"
#include "benchmarks/plain_sqlite.h"
#include "benchmarks/suites.h"
#include "host/data/database.h"
#include "host/data/record_set.h"

namespace goodsbook::benchmarks {

std::string productList() {
  return " SELECT d1801.wl_id,d1801.wl_name,d1801.wl_gg,d1004.class_id, d1004.class_name,D1801.dwcount,d1003.dw_id,d1003.dw_name,d1801.cd, d1801.wl_ys,d1801.CHECK_KC,d1801.dj,d1801dw.cgj,d1801dw.sj,d1801dw.vipsj,d1801dw.pfj,d1801dw.pfj1,d1801dw.pfj2,d1801dw.pfj3,d1801dw.pfj4,d1801dw.tm,d1801.pym, sys_user.user_id,sys_user.user_name,d1801.bdate,d1801.edate,d1801.note,d1801.dw_zh,d1801.DW_J_NAME,d1801.TMC FROM d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = sys_user.user_id INNER JOIN d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id  AND (D1801DW.T = 1)  ";
}

std::string productListContaining(const std::string& text) {
  const std::string like = " LIKE '%" + text + "%')";
  return productList() + " Where  ((D1801DW.TM" + like + " or (D1801.WL_ID" + like + " or (D1801.WL_name" +
         like + " or (D1801.PYM" + like + ")";
}

namespace {

class Loader : public engine::ResultSink {
 public:
  explicit Loader(RecordSet& rows) : rows_(rows) {}
  void beginSet(std::span<const engine::Column> columns) override { rows_.beginLoad(columns); }
  void row(const engine::Row& row) override { rows_.appendLoaded(row); }
  void endSet() override { rows_.endLoad(); }

 private:
  RecordSet& rows_;
};

// Bytes that the values themselves need: texts by their length, numbers, times and flags by their type.
class ValueBytes : public engine::ResultSink {
 public:
  double bytes = 0;

  void beginSet(std::span<const engine::Column> columns) override {
    columns_.assign(columns.begin(), columns.end());
  }
  void row(const engine::Row& row) override {
    for (int column = 0; column < static_cast<int>(columns_.size()); ++column) {
      if (row.isNull(column)) continue;
      switch (columns_[static_cast<std::size_t>(column)].type) {
        case engine::Type::Text:
          bytes += static_cast<double>(row.text(column).size());
          break;
        case engine::Type::Blob:
          bytes += static_cast<double>(row.blob(column).size());
          break;
        case engine::Type::Bit:
          bytes += 1;
          break;
        case engine::Type::Integer:
          bytes += 4;
          break;
        case engine::Type::Float:
        case engine::Type::DateTime:
          bytes += 8;
          break;
      }
    }
  }

 private:
  std::vector<engine::Column> columns_;
};

}  // namespace

int listFigures(const std::string& databaseFile) {
  const auto database = openEmbeddedDatabase(QString::fromStdString(databaseFile), {.create = false});
  PlainSqlite plain(databaseFile);
  constexpr double megabyte = 1024.0 * 1024;
  int missed = 0;

  auto rows = std::make_unique<RecordSet>();
  const auto open = [&](const std::string& select) {
    rows = std::make_unique<RecordSet>();
    Loader loader(*rows);
    database->query(QString::fromStdString(select), loader);
  };
  sqlite3_stmt* list = plain.prepare(productList());
  Pair pair = sideBySide(
      3, [&] { open(productList()); }, [&] { plain.readAll(list); });
  missed += !print({"open the product list into a record set", "ms", pair.ours, pair.floor, 1.2});

  ValueBytes values;
  database->query(QString::fromStdString(productList()), values);
  missed += !print({"memory of that record set", "MB", static_cast<double>(rows->memoryBytes()) / megabyte,
                    values.bytes / megabyte, 1.6});
  rows.reset();

  const std::string text = "99887";
  sqlite3_stmt* filtered = plain.prepare(productListContaining(text));
  pair = sideBySide(
      3, [&] { open(productListContaining(text)); }, [&] { plain.readAll(filtered); });
  missed += !print({"contains-filter over code, name, barcode, initials", "ms", pair.ours, pair.floor, 0.5});
  return missed;
}

}  // namespace goodsbook::benchmarks
