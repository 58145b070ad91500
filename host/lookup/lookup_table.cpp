#include "host/lookup/lookup_table.h"

#include <QCoreApplication>
#include <QHash>
#include <functional>

#include "host/U_function.h"
#include "host/Zpy.h"
#include "host/data/database.h"
#include "host/data/value_text.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

using Texts = std::vector<QString>;

class TextSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column> columns) override {
    for (const engine::Column& column : columns) types_.push_back(column.type);
  }
  void row(const engine::Row& row) override {
    Texts texts;
    for (int i = 0; i < static_cast<int>(types_.size()); ++i) {
      texts.push_back(valueText(row, i, types_[static_cast<std::size_t>(i)]).value_or(QString()));
    }
    rows.push_back(std::move(texts));
  }
  std::vector<Texts> rows;

 private:
  std::vector<engine::Type> types_;
};

std::vector<Texts> select(const QString& statement) {
  TextSink sink;
  Session::current().database().query(statement, sink);
  return std::move(sink.rows);
}

// Parents before their children, in the order of the rows; rows whose parent is not offered stand at the top.
std::vector<LookupTable::Row> asTree(const std::vector<Texts>& rows) {
  QHash<QString, bool> known;
  QHash<QString, std::vector<std::size_t>> childrenOf;
  for (const Texts& row : rows) known.insert(row[0].toUpper(), true);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const QString parent = rows[i][3].trimmed().toUpper();
    const bool isTop = !known.contains(parent) || parent == rows[i][0].toUpper();
    childrenOf[isTop ? QString() : parent].push_back(i);
  }
  std::vector<LookupTable::Row> ordered;
  std::vector<bool> placed(rows.size(), false);
  const std::function<void(std::size_t, int)> place = [&](std::size_t i, int level) {
    if (placed[i]) return;
    placed[i] = true;
    ordered.push_back({rows[i][0], rows[i][1], rows[i][2], level});
    for (const std::size_t child : childrenOf.value(rows[i][0].toUpper())) place(child, level + 1);
  };
  for (const std::size_t top : childrenOf.value(QString())) place(top, 0);
  for (std::size_t i = 0; i < rows.size(); ++i) place(i, 0);  // what hangs in a ring of parents
  return ordered;
}

QString tr(const char* text) {
  return QCoreApplication::translate("Lookup", text);
}

}  // namespace

std::optional<QString> LookupTable::nameOf(const QString& code) const {
  if (code.trimmed().isEmpty()) return std::nullopt;
  const std::vector<Texts> found =
      select(u"select %1 from %2 where %3=%4"_s.arg(nameField, table, idField, QuotedStr(code.trimmed())));
  if (found.empty()) return std::nullopt;
  return found.front()[0];
}

std::vector<LookupTable::Row> LookupTable::rows(const QString& condition) const {
  const auto orEmpty = [](const QString& field) { return field.isEmpty() ? u"''"_s : field; };
  QString statement = u"select %1, %2, %3, %4 from %5"_s.arg(idField, nameField, orEmpty(initialsField),
                                                             orEmpty(parentField), table);
  QStringList conditions;
  for (const QString& part : {offered, condition}) {
    if (!part.trimmed().isEmpty()) conditions << u'(' + part + u')';
  }
  if (!conditions.isEmpty()) statement += u" where "_s + conditions.join(u" and "_s);
  std::vector<Texts> found = select(statement + u" order by "_s + idField);
  if (initialsField.isEmpty()) {
    for (Texts& row : found) row[2] = Zpy::GetPY(row[1].trimmed());
  }
  if (!parentField.isEmpty()) return asTree(found);
  std::vector<Row> flat;
  for (const Texts& row : found) flat.push_back({row[0], row[1], row[2], 0});
  return flat;
}

namespace lookup {

const LookupTable& categories() {
  static const LookupTable table{tr("商品类别"), u"D1004"_s, u"CLASS_ID"_s, u"CLASS_NAME"_s, u"PYM"_s,
                                 u"OID"_s,       {}};
  return table;
}

const LookupTable& units() {
  static const LookupTable table{tr("计量单位"), u"D1003"_s, u"DW_ID"_s, u"DW_NAME"_s, u"PYM"_s, {}, {}};
  return table;
}

const LookupTable& warehouses() {
  static const LookupTable table{tr("仓库"), u"D1007"_s, u"CK_ID"_s, u"CK_NAME"_s, u"PYM"_s, u"OID"_s, {}};
  return table;
}

const LookupTable& departments() {
  static const LookupTable table{tr("部门"), u"D1008"_s, u"BM_ID"_s, u"BM_NAME"_s, u"PYM"_s, u"OID"_s, {}};
  return table;
}

const LookupTable& salespeople() {
  static const LookupTable table{tr("业务员"), u"D1101"_s, u"YW_ID"_s,           u"YW_NAME"_s,
                                 u"PYM"_s,     {},         u"T is null or T=0"_s};
  return table;
}

const LookupTable& regions() {
  static const LookupTable table{tr("地区"), u"D1002"_s, u"ADDR_ID"_s, u"ADDR_NAME"_s, {}, u"OID"_s, {}};
  return table;
}

const LookupTable& deliveryMethods() {
  static const LookupTable table{tr("送货方式"), u"D1011"_s, u"SEND_ID"_s, u"SEND_NAME"_s, u"PYM"_s, {}, {}};
  return table;
}

}  // namespace lookup

}  // namespace goodsbook
