#include "host/lookup/match.h"

namespace goodsbook {

int matchRank(const QString& code, const QString& name, const QString& initials, const QString& typed) {
  const auto any = [&](auto&& test) { return test(code) || test(name) || test(initials); };
  if (code.compare(typed, Qt::CaseInsensitive) == 0) return 0;
  if (any([&](const QString& text) { return text.compare(typed, Qt::CaseInsensitive) == 0; })) return 1;
  if (any([&](const QString& text) { return text.startsWith(typed, Qt::CaseInsensitive); })) return 2;
  if (any([&](const QString& text) { return text.contains(typed, Qt::CaseInsensitive); })) return 3;
  return -1;
}

}  // namespace goodsbook
