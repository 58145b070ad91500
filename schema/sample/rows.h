#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "schema/sample/sample.h"

// Putting T-SQL together.
namespace goodsbook::sample {

std::string padded(std::int64_t number, int digits);  // with leading zeros
std::string quoted(std::string_view text);            // N'…', inner quotes doubled
std::string cents(std::int64_t amount);               // 1250 → 12.50
std::string binary(std::string_view bytes);           // 0x…

// A day of the sample's calendar as '2026-11-20', and the same without dashes and century as 261120. The day
// is counted from 1970-01-01.
std::string dateText(int day);
std::string shortDate(int day);

// Collects rows for one table and sends them as inserts of several rows. All inserts but the last have the
// same number of rows, so that the database prepares them once. Values are appended in the order of the
// columns.
class Rows {
 public:
  Rows(const Tools& tools, std::string_view tableAndColumns, int rowsAtOnce = 200);
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;

  Rows& text(std::string_view value);
  Rows& number(std::int64_t value);
  Rows& money(std::int64_t amountInCents);
  // Hundredths of an amount that may be below zero, as a text: a sign is an operator, and a statement of
  // another form.
  Rows& signedAmount(std::int64_t hundredths);
  Rows& time(int day, int secondOfDay);
  Rows& timeOrNull(std::optional<int> day, int secondOfDay);
  Rows& raw(std::string_view sql);  // a number or a function, as it is
  void end();                       // of a row
  void flush();                     // sends what is left

 private:
  void separate();
  void endStatement();

  const Tools& tools_;
  std::string head_;
  int rowsAtOnce_;
  int rows_ = 0;        // of the open statement
  int statements_ = 0;  // finished ones in the batch
  bool inRow_ = false;
  std::string batch_;
};

}  // namespace goodsbook::sample
