#include "host/forms/row_guard.h"

#include <QCoreApplication>
#include <algorithm>

#include "host/U_function.h"
#include "host/data/record_set.h"
#include "host/forms/Base_common.h"
#include "host/forms/list_statement.h"
#include "host/forms/table_relations.h"
#include "host/lookup/lookup_table.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(RowGuard)
};

using Row = std::vector<std::optional<QString>>;

SqlSet read(const QString& select) {
  return readSql(Session::current().database(), select);
}

QString isRow(const QString& column, const QString& key) {
  return column + u'=' + QuotedStr(key);
}

QString selectOf(const QString& table, const QString& column, const QString& key) {
  return u"select * from "_s + table + u" where "_s + isRow(column, key);
}

// The row with the same key in `rows`; without a key column the only row.
const Row* counterpart(const SqlSet& rows, const Row& row, qsizetype keyIndex) {
  if (keyIndex < 0) return rows.rows.empty() ? nullptr : &rows.rows.front();
  const auto index = static_cast<std::size_t>(keyIndex);
  const auto found =
      std::ranges::find_if(rows.rows, [&](const Row& other) { return other[index] == row[index]; });
  return found == rows.rows.end() ? nullptr : &*found;
}

qsizetype indexOf(const SqlSet& rows, const QString& column) {
  const auto found = std::ranges::find_if(rows.columns, [&](const QString& name) {
    return !column.isEmpty() && name.compare(column, Qt::CaseInsensitive) == 0;
  });
  return found == rows.columns.end() ? -1 : found - rows.columns.begin();
}

void addOnce(QStringList& names, const QString& name) {
  if (!names.contains(name)) names << name;
}

const Row* rowShown(const SqlSet& rows, qsizetype markIndex) {
  const auto found = std::ranges::find_if(rows.rows, [&](const Row& row) {
    return markIndex < 0 || row[static_cast<std::size_t>(markIndex)] == u"1"_s;
  });
  return found == rows.rows.end() ? nullptr : &*found;
}

bool isKeptByOthers(const QString& table, const QString& column) {
  return std::ranges::any_of(keptByOthers(table), [&](QLatin1StringView name) {
    return column.compare(name, Qt::CaseInsensitive) == 0;
  });
}

// Whether the field holds `text`, both as the field's type has it.
bool holds(const RecordSet& list, const QString& column, const QVariant& text) {
  RecordSet converted;
  converted.create({list.field(list.fieldIndex(column))});
  converted.append();
  converted.setValue(column, text);
  return converted.value(column) == list.value(column);
}

// Into the current row, unless it is there.
void take(RecordSet& list, const QString& column, const std::optional<QString>& text) {
  if (!list.hasField(column)) return;
  const QVariant now = text ? QVariant(*text) : QVariant();
  if (!holds(list, column, now)) list.setValue(column, now);
}

// Columns as the screen's labels call them; those that it does not show are left out.
QStringList asLabels(TFrm_Base_Common& screen, const QStringList& columns) {
  QStringList labels;
  for (const FieldSet::Bound& field : screen.fields().all()) {
    const QString& column = field.spec.stored.isEmpty() ? field.spec.column : field.spec.stored;
    if (!columns.contains(column, Qt::CaseInsensitive)) continue;
    QString label = field.spec.rowLabel.isEmpty() ? field.spec.label : field.spec.rowLabel;
    if (label.isEmpty()) label = screen.labelOf(field.widget);
    label.remove(u' ').remove(u'\u3000').remove(u'&');
    while (label.endsWith(u':') || label.endsWith(u'：')) label.chop(1);
    addOnce(labels, label);
  }
  return labels;
}

}  // namespace

void RowGuard::watch(const TFrm_Base_Common& screen, const QString& key) {
  forget();
  const std::optional<RowPlace> place = rowPlaceOf(screen);
  if (!place) return;
  parts_.push_back({.select = selectOf(place->table, place->keyColumn, key), .table = place->table});
  if (const OwnedRows* owned = ownedRows(place->table)) {
    parts_.push_back({.select = selectOf(owned->table, owned->column, key),
                      .table = owned->table,
                      .rowKey = owned->rowKey,
                      .list = owned->list.toString(),
                      .mark = owned->mark});
  }
  for (Part& part : parts_) part.found = read(part.select);
  condition_ = isRow(place->table + u'.' + place->keyColumn, key);
}

void RowGuard::bringUpToDate(RecordSet& list, const QString& statement, const FieldSet& fields) const {
  if (parts_.empty()) return;
  const SqlSet listed = statement.trimmed().isEmpty() ? SqlSet() : read(withCondition(statement, condition_));
  if (listed.rows.size() == 1) {
    for (std::size_t i = 0; i < listed.columns.size(); ++i)
      take(list, listed.columns[i], listed.rows.front()[i]);
  } else {
    takeFound(list, fields);
  }
  if (list.state() == RecordSet::State::Edit) list.post();
}

void RowGuard::takeFound(RecordSet& list, const FieldSet& fields) const {
  for (const Part& part : parts_) {
    const Row* row = rowShown(part.found, indexOf(part.found, part.mark));
    for (std::size_t i = 0; row && i < row->size(); ++i) {
      const QString& column = part.found.columns[i];
      const bool ofRowItself = &part == &parts_.front() || indexOf(parts_.front().found, column) < 0;
      if (!ofRowItself || isKeptByOthers(part.table, column)) continue;
      take(list, column, (*row)[i]);
      for (const FieldSet::Bound& field : fields.all()) {
        if (field.spec.stored.compare(column, Qt::CaseInsensitive) == 0)
          take(list, field.spec.column, (*row)[i]);
      }
    }
  }
  for (const FieldSet::Bound& field : fields.all()) {
    const auto* code = qobject_cast<const TExtEdit*>(field.widget);
    if (code && code->lookup() && list.hasField(field.spec.column))
      take(list, field.spec.nameColumn, code->lookup()->nameOf(list.text(field.spec.column)));
  }
}

void RowGuard::watchRows(const QString& owner, const QString& rows, const QString& rowKey,
                         const QString& list) {
  parts_ = {{.select = owner}, {.select = rows, .rowKey = rowKey, .list = list}};
  for (Part& part : parts_) part.found = read(part.select);
}

void RowGuard::forget() {
  parts_.clear();
  condition_.clear();
}

QStringList RowGuard::differences(const Part& part, const SqlSet& after) {
  const SqlSet& before = part.found;
  const qsizetype key = indexOf(before, part.rowKey);
  QStringList names;
  if (before.rows.size() != after.rows.size()) addOnce(names, part.list);
  for (const Row& row : before.rows) {
    const Row* now = counterpart(after, row, key);
    if (!now) addOnce(names, part.list);
    for (std::size_t i = 0; now && i < row.size(); ++i) {
      const QString& column = before.columns[i];
      // An emptied field is saved as an empty text where there was none.
      const bool same = row[i].value_or(QString()) == (*now)[i].value_or(QString());
      if (!isKeptByOthers(part.table, column) && !same) addOnce(names, column.toUpper());
    }
  }
  return names;
}

void RowGuard::confirmSave(TFrm_Base_Common& screen, const QString& shown) {
  QStringList columns, lists;
  std::vector<SqlSet> now;
  for (const Part& part : parts_) {
    now.push_back(read(part.select));
    if (part.rowKey.isEmpty() && now.back().rows.empty()) {
      DISPINFO(Texts::tr("【%1】已被其他用户删除，不能保存!").arg(shown), 5);
      throw EAbort();
    }
    const QStringList changed = differences(part, now.back());
    columns += changed;
    if (!part.list.isEmpty() && !changed.isEmpty()) addOnce(lists, part.list);
  }
  if (columns.isEmpty()) return;
  const QStringList names = asLabels(screen, columns) + lists;
  const QString what = names.isEmpty() ? QString() : u'：' + names.join(u'、');
  if (DISPINFO(Texts::tr("【%1】打开后已被其他用户修改%2。\r\n是否仍然保存?").arg(shown, what), 2) != 'y') {
    throw EAbort();
  }
  // Should the save fail, the next try asks only about what has changed since.
  for (std::size_t i = 0; i < parts_.size(); ++i) parts_[i].found = std::move(now[i]);
}

}  // namespace goodsbook
