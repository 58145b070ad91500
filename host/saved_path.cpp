#include "host/saved_path.h"

#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

QStringList suffixes(const QString& filter) {
  static const QRegularExpression pattern(u"\\*(\\.[^\\s;)]+)"_s);
  QStringList found;
  for (const QRegularExpressionMatch& match : pattern.globalMatch(filter)) found << match.captured(1);
  return found;
}

}  // namespace

QString withSuffix(const QString& path, const QString& filter, const QString& chosen) {
  const QStringList known = suffixes(filter);
  const auto endsIn = [&path](const QString& suffix) { return path.endsWith(suffix, Qt::CaseInsensitive); };
  if (std::any_of(known.begin(), known.end(), endsIn)) return path;
  const QStringList wanted = chosen.isEmpty() ? known : suffixes(chosen);
  return wanted.isEmpty() ? path : path + wanted.first();
}

}  // namespace goodsbook
