#include "schema/sample/rows.h"

#include <chrono>
#include <cstdlib>

namespace goodsbook::sample {
namespace {

// A transaction waits for the disk at its end; few big ones are quicker than many small ones.
constexpr int statementsAtOnce = 10;

std::string dateParts(int day, std::string_view separator, int yearDigits) {
  const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
  std::string text =
      padded(static_cast<int>(date.year()), 4).substr(static_cast<std::size_t>(4 - yearDigits));
  text.append(separator).append(padded(static_cast<unsigned>(date.month()), 2));
  text.append(separator).append(padded(static_cast<unsigned>(date.day()), 2));
  return text;
}

}  // namespace

std::string padded(std::int64_t number, int digits) {
  std::string text = std::to_string(number);
  if (text.size() < static_cast<std::size_t>(digits))
    text.insert(0, static_cast<std::size_t>(digits) - text.size(), '0');
  return text;
}

std::string quoted(std::string_view text) {
  std::string result = "N'";
  for (const char c : text) {
    result += c;
    if (c == '\'') result += c;
  }
  result += '\'';
  return result;
}

std::string cents(std::int64_t amount) {
  const std::int64_t size = std::abs(amount);
  return (amount < 0 ? "-" : "") + std::to_string(size / 100) + "." + padded(size % 100, 2);
}

std::string binary(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text = "0x";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += digits[byte >> 4U];
    text += digits[byte & 15U];
  }
  return text;
}

std::string dateText(int day) {
  return dateParts(day, "-", 4);
}

std::string shortDate(int day) {
  return dateParts(day, "", 2);
}

namespace {

std::string timeText(int day, int secondOfDay) {
  return "'" + dateText(day) + " " + padded(secondOfDay / 3600, 2) + ":" + padded(secondOfDay / 60 % 60, 2) +
         ":" + padded(secondOfDay % 60, 2) + "'";
}

}  // namespace

Rows::Rows(const Tools& tools, std::string_view tableAndColumns, int rowsAtOnce)
    : tools_(tools),
      head_("insert into " + std::string(tableAndColumns) + " values\n"),
      rowsAtOnce_(rowsAtOnce) {}

void Rows::separate() {
  if (inRow_)
    batch_ += ',';
  else
    batch_ += rows_ == 0 ? head_ + "(" : ",\n(";
  inRow_ = true;
}

Rows& Rows::text(std::string_view value) {
  return raw(quoted(value));
}

Rows& Rows::number(std::int64_t value) {
  return raw(std::to_string(value));
}

Rows& Rows::money(std::int64_t amountInCents) {
  return raw(cents(amountInCents));
}

Rows& Rows::signedAmount(std::int64_t hundredths) {
  return raw("'" + cents(hundredths) + "'");
}

Rows& Rows::time(int day, int secondOfDay) {
  return raw(timeText(day, secondOfDay));
}

// A bare NULL would make it a statement of another form.
Rows& Rows::timeOrNull(std::optional<int> day, int secondOfDay) {
  return raw("nullif(" + (day ? timeText(*day, secondOfDay) : std::string("''")) + ",'')");
}

Rows& Rows::raw(std::string_view sql) {
  separate();
  batch_ += sql;
  return *this;
}

void Rows::end() {
  batch_ += ')';
  inRow_ = false;
  if (++rows_ < rowsAtOnce_) return;
  endStatement();
  if (statements_ == statementsAtOnce) flush();
}

void Rows::endStatement() {
  if (rows_ == 0) return;
  batch_ += '\n';
  ++statements_;
  rows_ = 0;
}

void Rows::flush() {
  endStatement();
  if (statements_ > 0) tools_.execute(batch_);
  batch_.clear();
  statements_ = 0;
}

}  // namespace goodsbook::sample
