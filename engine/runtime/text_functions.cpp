#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "engine/runtime/failure.h"
#include "engine/runtime/function_support.h"
#include "engine/runtime/like.h"
#include "engine/runtime/text.h"

namespace goodsbook::engine {
namespace {

using Arguments = FunctionArguments;

// ts_like(text, pattern [, escape]); the pattern is made ready once for all rows.
void like(const Arguments& a) {
  if (a.anyNull()) return;
  constexpr int slot = 1;
  auto* ready = static_cast<LikePattern*>(sqlite3_get_auxdata(a.context, slot));
  if (ready != nullptr) {
    a.give(std::int64_t{ready->matches(a.text(0))});
    return;
  }
  auto fresh = std::make_unique<LikePattern>(a.text(1), a.size() > 2 ? a.text(2) : std::string_view());
  a.give(std::int64_t{fresh->matches(a.text(0))});
  sqlite3_set_auxdata(a.context, slot, fresh.release(), [](void* p) { delete static_cast<LikePattern*>(p); });
}

// ts_like_any(text, pattern, text, pattern, …): whether one of the texts is like its pattern. The patterns
// are constants.
void likeAny(const Arguments& a) {
  using Patterns = std::vector<std::optional<LikePattern>>;
  constexpr int slot = 1;
  auto* ready = static_cast<Patterns*>(sqlite3_get_auxdata(a.context, slot));
  std::unique_ptr<Patterns> fresh;
  if (ready == nullptr) {
    fresh = std::make_unique<Patterns>();
    for (int i = 1; i < a.size(); i += 2) {
      fresh->emplace_back();
      if (!a.isNull(i)) fresh->back().emplace(a.text(i));
    }
    ready = fresh.get();
  }
  bool found = false;
  for (int i = 0; i + 1 < a.size() && !found; i += 2) {
    const auto& pattern = (*ready)[static_cast<std::size_t>(i / 2)];
    found = pattern && !a.isNull(i) && pattern->matches(a.text(i));
  }
  a.give(std::int64_t{found});
  if (fresh)
    sqlite3_set_auxdata(a.context, slot, fresh.release(), [](void* p) { delete static_cast<Patterns*>(p); });
}

std::size_t lengthArgument(const Arguments& a, int i, std::string_view function) {
  const std::int64_t length = a.integer(i);
  if (length < 0) fail(536, concat("传递到 ", function, " 函数的长度参数无效。"));
  return static_cast<std::size_t>(length);
}

void left(const Arguments& a) {
  if (a.anyNull()) return;
  const std::string_view text = a.text(0);
  a.give(text.substr(0, offsetOfCharacter(text, lengthArgument(a, 1, "LEFT"))));
}

void right(const Arguments& a) {
  if (a.anyNull()) return;
  const std::string_view text = a.text(0);
  const std::size_t wanted = lengthArgument(a, 1, "RIGHT");
  const std::size_t count = characterCount(text);
  a.give(text.substr(offsetOfCharacter(text, count > wanted ? count - wanted : 0)));
}

void substring(const Arguments& a) {
  if (a.anyNull()) return;
  const std::string_view text = a.text(0);
  constexpr std::int64_t most = 1 << 30;
  const std::int64_t first = std::clamp(a.integer(1), -most, most);
  const auto length =
      static_cast<std::int64_t>(std::min<std::size_t>(lengthArgument(a, 2, "SUBSTRING"), most));
  const std::int64_t begin = std::max<std::int64_t>(first, 1) - 1;
  const std::int64_t end = std::max(first - 1 + length, begin);
  const std::size_t from = offsetOfCharacter(text, static_cast<std::size_t>(begin));
  const std::string_view rest = text.substr(from);
  a.give(rest.substr(0, offsetOfCharacter(rest, static_cast<std::size_t>(end - begin))));
}

void len(const Arguments& a) {
  if (!a.anyNull()) a.give(static_cast<std::int64_t>(characterCount(withoutTrailingBlanks(a.text(0)))));
}
void ltrim(const Arguments& a) {
  if (!a.anyNull()) a.give(withoutLeadingBlanks(a.text(0)));
}
void rtrim(const Arguments& a) {
  if (!a.anyNull()) a.give(withoutTrailingBlanks(a.text(0)));
}
void trim(const Arguments& a) {
  if (!a.anyNull()) a.give(withoutLeadingBlanks(withoutTrailingBlanks(a.text(0))));
}
void upper(const Arguments& a) {
  if (!a.anyNull()) a.give(std::string_view(toUpper(a.text(0))));
}
void lower(const Arguments& a) {
  if (!a.anyNull()) a.give(std::string_view(toLower(a.text(0))));
}
void replace(const Arguments& a) {
  if (!a.anyNull()) a.give(std::string_view(replaceText(a.text(0), a.text(1), a.text(2))));
}

void charindex(const Arguments& a) {
  if (a.anyNull()) return;
  const std::int64_t first = a.size() > 2 ? std::max<std::int64_t>(a.integer(2), 1) : 1;
  a.give(static_cast<std::int64_t>(findText(a.text(0), a.text(1), static_cast<std::size_t>(first))));
}

void replicate(const Arguments& a) {
  if (a.anyNull() || a.integer(1) < 0) return;
  constexpr std::size_t longest = 8000;
  const std::string_view piece = a.text(0);
  std::string result;
  for (std::int64_t i = 0; i < a.integer(1) && !piece.empty() && result.size() + piece.size() <= longest; ++i)
    result.append(piece);
  a.give(std::string_view(result));
}

void stuff(const Arguments& a) {
  if (a.isNull(0) || a.isNull(1) || a.isNull(2)) return;
  const std::string_view text = a.text(0);
  const std::int64_t first = a.integer(1);
  const std::int64_t length = a.integer(2);
  if (first < 1 || length < 0 || first > static_cast<std::int64_t>(characterCount(text))) return;
  const std::size_t begin = offsetOfCharacter(text, static_cast<std::size_t>(first - 1));
  const std::string_view rest = text.substr(begin);
  const std::size_t end = begin + offsetOfCharacter(rest, static_cast<std::size_t>(length));
  a.give(std::string_view(concat(text.substr(0, begin), a.text(3), text.substr(end))));
}

}  // namespace

void registerTextFunctions(sqlite3* db, FunctionErrors& errors) {
  static constexpr std::array<FunctionEntry, 17> entries{{
      {"ts_like", 2, callFunction<like>},
      {"ts_like", 3, callFunction<like>},
      {"ts_like_any", -1, callFunction<likeAny>},
      {"ts_left", 2, callFunction<left>},
      {"ts_right", 2, callFunction<right>},
      {"ts_substring", 3, callFunction<substring>},
      {"ts_len", 1, callFunction<len>},
      {"ts_ltrim", 1, callFunction<ltrim>},
      {"ts_rtrim", 1, callFunction<rtrim>},
      {"ts_trim", 1, callFunction<trim>},
      {"ts_upper", 1, callFunction<upper>},
      {"ts_lower", 1, callFunction<lower>},
      {"ts_replace", 3, callFunction<replace>},
      {"ts_charindex", 2, callFunction<charindex>},
      {"ts_charindex", 3, callFunction<charindex>},
      {"ts_replicate", 2, callFunction<replicate>},
      {"ts_stuff", 4, callFunction<stuff>},
  }};
  registerFunctions(db, errors, entries);
}

}  // namespace goodsbook::engine
