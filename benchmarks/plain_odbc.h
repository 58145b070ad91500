#pragma once

#include <cstdint>
#include <string>

namespace goodsbook::benchmarks {

// The floor: the ODBC manager and the driver with nothing around them. Failures end the program: a floor that
// fails measures nothing.
class PlainOdbc {
 public:
  explicit PlainOdbc(const std::u16string& connectionText);
  ~PlainOdbc();
  PlainOdbc(const PlainOdbc&) = delete;
  PlainOdbc& operator=(const PlainOdbc&) = delete;

  // Fetches a select in blocks of rows into bound columns, numbers as numbers and texts as UTF-16, to the
  // end; gives the number of rows.
  std::int64_t readAll(const std::u16string& select);

 private:
  void* environment_ = nullptr;
  void* connection_ = nullptr;
};

}  // namespace goodsbook::benchmarks
