#include "tests/engine/support/session.h"

#include <unistd.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "engine/syntax/batches.h"
#include "schema/schema.h"
#include "tests/engine/support/cases.h"

namespace goodsbook::engine::test {
namespace {

constexpr const char* fileName = "test.db";
constexpr std::int64_t millisecondsOfDay = 86'400'000;

// In memory where there is such a place: every commit waits for the disk otherwise.
std::filesystem::path temporaryFolder() {
  const std::filesystem::path memory = "/dev/shm";
  const bool inMemory = access(memory.c_str(), W_OK) == 0;
  std::string pattern =
      ((inMemory ? memory : std::filesystem::temp_directory_path()) / "engine_test_XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return pattern;
}

class Folder {
 public:
  Folder() : path_(temporaryFolder()) {}
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

class Nothing : public ResultSink {
 public:
  void beginSet(std::span<const Column>) override {}
  void row(const Row&) override {}
};

// Files with the tables, made once for all sessions of a process.
class Templates {
 public:
  const std::filesystem::path& file(Tables tables) {
    auto& path = files_[tables == Tables::Cases ? 0 : 1];
    if (path.empty()) path = make(tables == Tables::Cases ? preludeScript() : schema::script());
    return path;
  }

 private:
  std::filesystem::path make(std::string_view script) {
    const std::string number = std::to_string(++made_);
    const std::filesystem::path copy = folder_.path() / ("template" + number + ".db");
    Options options;
    options.create = true;
    const auto connection = Connection::open(folder_.path() / ("made" + number + ".db"), options);
    Nothing sink;
    for (const BatchText& batch : splitBatches(script))
      connection->execute(batch.text, sink, Permission::Owner);
    connection->backup(copy);
    return copy;
  }

  Folder folder_;
  std::array<std::filesystem::path, 2> files_;
  int made_ = 0;
};

const std::filesystem::path& templateFile(Tables tables) {
  static Templates templates;
  return templates.file(tables);
}

std::string dateTimeText(std::int64_t milliseconds) {
  const std::int64_t day = milliseconds / millisecondsOfDay - (milliseconds % millisecondsOfDay < 0 ? 1 : 0);
  const std::int64_t rest = milliseconds - day * millisecondsOfDay;
  const std::chrono::sys_days date =
      std::chrono::sys_days(std::chrono::year{1900} / 1 / 1) + std::chrono::days(day);
  const std::chrono::year_month_day parts(date);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(parts.year()),
                static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()),
                static_cast<int>(rest / 3'600'000), static_cast<int>(rest / 60'000 % 60),
                static_cast<int>(rest / 1'000 % 60));
  std::string result = text.data();
  if (rest % 1'000 != 0) {
    std::snprintf(text.data(), text.size(), ".%03d", static_cast<int>(rest % 1'000));
    result += text.data();
  }
  return result;
}

std::string realText(double value) {
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value == 0 ? 0.0 : value);
  return {text.data(), end.ptr};
}

std::string blobText(std::span<const std::byte> bytes) {
  static constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text = "0x";
  for (std::byte byte : bytes) {
    text += digits[std::to_integer<unsigned>(byte) >> 4U];
    text += digits[std::to_integer<unsigned>(byte) & 15U];
  }
  return text;
}

class Collector : public ResultSink {
 public:
  explicit Collector(Outcome& outcome) : outcome_(outcome) {}
  void beginSet(std::span<const Column> columns) override {
    outcome_.sets.emplace_back().columns.assign(columns.begin(), columns.end());
  }
  void row(const Row& row) override {
    ResultSet& set = outcome_.sets.back();
    auto& values = set.rows.emplace_back();
    for (std::size_t i = 0; i < set.columns.size(); ++i) {
      values.push_back(valueText(row, static_cast<int>(i), set.columns[i].type));
    }
  }
  void affected(std::int64_t rows) override { outcome_.counts.push_back(rows); }
  void notice(const Diagnostic& notice) override { outcome_.notices.push_back(notice); }

 private:
  Outcome& outcome_;
};

}  // namespace

Outcome runOn(Connection& connection, std::string_view batch, Permission permission) {
  Outcome outcome;
  Collector collector(outcome);
  try {
    connection.execute(batch, collector, permission);
  } catch (const SqlError& error) {
    outcome.error = error.diagnostic();
  }
  return outcome;
}

Value valueText(const Row& row, int column, Type type) {
  if (row.isNull(column)) return std::nullopt;
  switch (type) {
    case Type::Bit:
    case Type::Integer:
      return std::to_string(row.integer(column));
    case Type::Float:
      return realText(row.real(column));
    case Type::DateTime:
      return dateTimeText(row.integer(column));
    case Type::Text:
      return std::string(row.text(column));
    case Type::Blob:
      return blobText(row.blob(column));
  }
  return std::nullopt;
}

std::int64_t Session::now() {
  using namespace std::chrono;
  const sys_days date{year{2026} / 11 / 20};
  return duration_cast<milliseconds>(date - sys_days(year{1900} / 1 / 1) + 10h + 11min + 12s).count();
}

Session::Session(Tables tables) : Session(templateFile(tables)) {}

Session::Session(const std::filesystem::path& original) : folder_(temporaryFolder()) {
  std::filesystem::copy_file(original, folder_ / fileName);
  connection_ = connect();
}

std::unique_ptr<Connection> Session::connect() const {
  Options options;
  options.now = now;
  return Connection::open(folder_ / fileName, options);
}

Session::~Session() {
  connection_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

Outcome Session::run(std::string_view batch, Permission permission) {
  return runOn(*connection_, batch, permission);
}

void Session::setUp(std::span<const std::string_view> batches) {
  for (std::string_view batch : batches) {
    const Outcome outcome = run(batch);
    if (outcome.error) throw std::runtime_error(outcome.error->text + "\n" + std::string(batch));
  }
}

Rows Session::rows(std::string_view select) {
  Outcome outcome = run(select);
  if (outcome.error) throw std::runtime_error(outcome.error->text + "\n" + std::string(select));
  if (outcome.sets.size() != 1) throw std::runtime_error("not one set: " + std::string(select));
  return std::move(outcome.sets.front().rows);
}

std::string Session::filled(std::string batch) {
  for (std::size_t open = batch.find("{{"); open != std::string::npos; open = batch.find("{{")) {
    const std::size_t close = batch.find("}}");
    const Rows found = rows(batch.substr(open + 2, close - open - 2));
    if (found.empty()) throw std::runtime_error("no row for " + batch);
    batch.replace(open, close + 2 - open, found.front().front().value_or("NULL"));
  }
  return batch;
}

}  // namespace goodsbook::engine::test
