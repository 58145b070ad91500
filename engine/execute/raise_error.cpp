#include "engine/execute/raise_error.h"

#include <array>
#include <cstdio>

#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

constexpr std::size_t longestText = 2044;

std::string formatOne(std::string_view flags, char kind, const Value& argument, std::size_t number) {
  if (isNull(argument)) return "(null)";
  std::array<char, 64> buffer{};
  if (kind == 's') {
    if (const auto* text = std::get_if<std::string>(&argument)) {
      const std::string format = concat("%", flags, "s");
      const int size = std::snprintf(nullptr, 0, format.c_str(), text->c_str());
      std::string result(static_cast<std::size_t>(size), '\0');
      std::snprintf(result.data(), result.size() + 1, format.c_str(), text->c_str());
      return result;
    }
  } else if (const auto* whole = std::get_if<std::int64_t>(&argument)) {
    const std::string format = concat("%", flags, "ll", std::string(1, kind));
    std::snprintf(buffer.data(), buffer.size(), format.c_str(), static_cast<long long>(*whole));
    return buffer.data();
  }
  fail(2786, concat("替换参数 ", std::to_string(number), " 的数据类型与格式规范所要求的数据类型不匹配。"));
}

}  // namespace

std::string formatMessage(std::string_view format, std::span<const Value> arguments) {
  std::string text;
  std::size_t next = 0;
  for (std::size_t at = 0; at < format.size();) {
    const char c = format[at++];
    if (c != '%') {
      text.push_back(c);
      continue;
    }
    const std::size_t start = at;
    at = format.find_first_not_of("-+0 #123456789.", at);
    const std::string_view flags = format.substr(start, at == std::string_view::npos ? at : at - start);
    if (at == std::string_view::npos || flags.size() > 8)
      fail(2787, concat("无效的格式规范: '%", flags, "'。"));
    const char kind = format[at++];
    if (kind == '%') {
      text.push_back('%');
    } else if (std::string_view("sdiuxXo").find(kind) == std::string_view::npos) {
      fail(2787, concat("无效的格式规范: '%", flags, std::string(1, kind), "'。"));
    } else {
      text += next < arguments.size() ? formatOne(flags, kind, arguments[next], next + 1) : "(null)";
      ++next;
    }
  }
  if (text.size() > longestText) text.resize(longestText);
  return text;
}

}  // namespace goodsbook::engine
