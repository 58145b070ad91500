#include "host/data/sql_sets.h"

#include "host/data/value_text.h"

namespace goodsbook {
namespace {

class Gatherer : public engine::ResultSink {
 public:
  SqlSets result;

  void beginSet(std::span<const engine::Column> columns) override {
    types_.clear();
    auto& set = result.sets.emplace_back();
    for (const auto& column : columns) {
      types_.push_back(column.type);
      set.columns.push_back(QString::fromStdString(column.name));
    }
  }

  void row(const engine::Row& row) override {
    auto& texts = result.sets.back().rows.emplace_back();
    texts.reserve(types_.size());
    for (std::size_t i = 0; i < types_.size(); ++i)
      texts.push_back(valueText(row, static_cast<int>(i), types_[i]));
  }

  void affected(std::int64_t rows) override { result.counts.push_back(rows); }
  void notice(const engine::Diagnostic& notice) override {
    result.notices.push_back(QString::fromStdString(notice.text));
  }

 private:
  std::vector<engine::Type> types_;
};

}  // namespace

SqlSets runSql(Database& database, const QString& batch, Database::Permission permission) {
  Gatherer gatherer;
  database.execute(batch, gatherer, permission);
  return std::move(gatherer.result);
}

SqlSet readSql(Database& database, const QString& select) {
  Gatherer gatherer;
  database.query(select, gatherer);
  std::vector<SqlSet>& sets = gatherer.result.sets;
  return sets.empty() ? SqlSet() : std::move(sets.front());
}

}  // namespace goodsbook
