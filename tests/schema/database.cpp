#include "tests/schema/database.h"

#include <cstdlib>
#include <stdexcept>

#include "schema/schema.h"

namespace goodsbook::schema::test {
namespace {

class SilentSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

std::filesystem::path newFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "goodsbook-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return name;
}

std::string textOf(const engine::Row& row, int column, engine::Type type) {
  if (row.isNull(column)) return "null";
  switch (type) {
    case engine::Type::Float: {
      std::string text = std::to_string(row.real(column));
      text.erase(text.find_last_not_of('0') + 1);
      if (text.ends_with('.')) text.pop_back();
      return text;
    }
    case engine::Type::Text:
      return std::string(row.text(column));
    case engine::Type::Blob:
      return std::to_string(row.blob(column).size()) + " bytes";
    default:
      return std::to_string(row.integer(column));
  }
}

}  // namespace

Database::Database() : folder_(newFolder()), connection_(connect()) {}

Database::~Database() {
  connection_.reset();
  std::filesystem::remove_all(folder_);
}

std::unique_ptr<engine::Connection> Database::connect() const {
  return engine::Connection::open(folder_ / "shop.db", {.create = true});
}

void Database::execute(std::string_view batch) {
  SilentSink sink;
  connection_->execute(batch, sink, engine::Permission::Owner);
}

void Database::executeScript(std::string_view script) {
  for (const ScriptBatch& batch : batches(script)) execute(batch.text);
}

Table Database::rows(std::string_view select) {
  Table table;
  const auto cursor = connection_->query(select);
  const auto columns = cursor->columns();
  while (cursor->next()) {
    auto& texts = table.emplace_back();
    for (std::size_t i = 0; i < columns.size(); ++i)
      texts.push_back(textOf(cursor->row(), static_cast<int>(i), columns[i].type));
  }
  return table;
}

std::int64_t Database::number(std::string_view select) {
  return std::stoll(rows(select).at(0).at(0));
}

std::vector<std::string> Database::columns(std::string_view table) {
  std::vector<std::string> result;
  const auto cursor = connection_->query("select * from " + std::string(table));
  for (const engine::Column& column : cursor->columns())
    result.push_back(column.name + " " + std::to_string(static_cast<int>(column.type)) + "(" +
                     std::to_string(column.width) + ")");
  return result;
}

}  // namespace goodsbook::schema::test
