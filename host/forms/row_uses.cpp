#include "host/forms/row_uses.h"

#include <QCoreApplication>
#include <algorithm>

#include "host/U_function.h"
#include "host/data/errors.h"
#include "host/data/sql_sets.h"
#include "host/forms/table_relations.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(RowUses)
};

// Counting on, a warehouse of a large shop would keep its question waiting; more than this tells no more.
constexpr qint64 countedUpTo = 1000;

struct Use {
  QString list;
  qint64 rows = 0;
};

QString selectOf(const Reference& reference, std::size_t place, const QString& key) {
  const QString where =
      u" from "_s + reference.table + u" where "_s + reference.column + u'=' + QuotedStr(key);
  return u"select %1 as place,count(*) as n from (select top %2 "_s.arg(place).arg(countedUpTo + 1) +
         reference.column + where + u") t"_s;
}

// Rows found through several tables of one list are added up.
void add(std::vector<Use>& uses, const Reference& reference, qint64 rows) {
  if (rows == 0) return;
  auto use = std::ranges::find_if(uses, [&](const Use& one) { return one.list == reference.list; });
  if (use == uses.end()) use = uses.insert(use, {.list = reference.list.toString()});
  use->rows += rows;
}

std::vector<Use> usesOf(const QString& table, const QString& key) {
  std::vector<const Reference*> asked;
  QStringList selects;
  for (const Reference& reference : references()) {
    if (table.compare(reference.master, Qt::CaseInsensitive) != 0) continue;
    selects << selectOf(reference, asked.size(), key);
    asked.push_back(&reference);
  }
  if (asked.empty()) return {};
  const SqlSet answer = readSql(Session::current().database(), selects.join(u" union all "_s));
  std::vector<qint64> counts(asked.size());
  for (const auto& row : answer.rows)
    counts.at(row[0].value_or(QString()).toUInt()) = row[1].value_or(QString()).toLongLong();
  std::vector<Use> uses;
  for (std::size_t i = 0; i < asked.size(); ++i) add(uses, *asked[i], counts[i]);
  return uses;
}

QString partOf(const Use& use) {
  if (use.rows > countedUpTo) return Texts::tr("%1 %2 行以上").arg(use.list).arg(countedUpTo);
  return Texts::tr("%1 %2 行").arg(use.list).arg(use.rows);
}

}  // namespace

QString usesLine(const TFrm_Base_Common& screen, const QString& key) {
  const std::optional<RowPlace> place = rowPlaceOf(screen);
  if (!place) return {};
  try {
    QStringList parts;
    for (const Use& use : usesOf(place->table, key)) parts << partOf(use);
    return parts.isEmpty() ? QString() : Texts::tr("\r\n该资料已被使用：%1。").arg(parts.join(u'、'));
  } catch (const EDatabaseError& error) {
    constexpr int noSuchTable = 208;
    if (error.number != noSuchTable) throw;
    return {};  // of another module, which is not here: the question is asked all the same
  }
}

}  // namespace goodsbook
