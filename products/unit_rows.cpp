#include "products/unit_rows.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

#include "host/U_function.h"
#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "host/data/value_text.h"
#include "host/lookup/lookup_table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr int checkedAsUnits = 10032;  // what checkDatamore knows this kind of rows by

QString translated(const char* text) {
  return QCoreApplication::translate("UnitRows", text);
}

[[noreturn]] void refuse(const char* text) {
  DISPINFO(translated(text), 5);
  throw EAbort();
}

// One change with the values after it.
class After {
 public:
  After(const RecordSet& rows, const RecordSet::Change& change) : rows_(rows), change_(change) {}

  QString text(const QString& field) const { return valueText(value(field)); }
  // Numbers stand without quotes: one that was never set is 0.
  QString number(const QString& field) const {
    const QString shown = text(field);
    return shown.isEmpty() ? u"0"_s : shown;
  }

 private:
  QVariant value(const QString& field) const {
    const auto index = static_cast<std::size_t>(rows_.fieldIndex(field));
    const bool changed = index < change_.isChanged.size() && change_.isChanged[index];
    if (changed) return change_.newValues[index];
    return index < change_.oldValues.size() ? change_.oldValues[index] : QVariant();
  }
  static QString valueText(const QVariant& value) {
    if (value.isNull()) return {};
    return value.typeId() == QMetaType::Double ? floatText(value.toDouble()) : value.toString();
  }

  const RecordSet& rows_;
  const RecordSet::Change& change_;
};

QString statementOf(const RecordSet& rows, const RecordSet::Change& change, const QString& product) {
  const After after(rows, change);
  switch (change.kind) {
    case RecordSet::Change::Kind::Updated:
      return u"exec SYS_DW @t='"_s + after.number(u"T"_s) + u"',@adw='"_s + after.text(u"adw"_s) +
             u"',@tm='"_s + after.text(u"TM"_s) + u"',@dw_id='"_s + after.text(u"DW_ID"_s) + u"',@abase="_s +
             after.number(u"ABASE"_s) + u",@cgj="_s + after.number(u"CGJ"_s) + u",@pfj="_s +
             after.number(u"PFJ"_s) + u",@vipsj="_s + after.number(u"VIPSJ"_s) + u",@sj="_s +
             after.number(u"SJ"_s) + u';';
    case RecordSet::Change::Kind::Inserted:
      return u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,PFJ,cgj) values ("_s +
             after.number(u"T"_s) + u",'"_s + product + u"','"_s + after.text(u"DW_ID"_s) + u"','"_s +
             after.text(u"TM"_s) + u"',"_s + after.number(u"ABASE"_s) + u',' + after.number(u"SJ"_s) + u',' +
             after.number(u"VIPSJ"_s) + u',' + after.number(u"PFJ"_s) + u',' + after.number(u"CGJ"_s) +
             u");"_s;
    case RecordSet::Change::Kind::Deleted:
      return u"exec SYS_DW @status=0,@t=0,@adw='"_s + after.text(u"adw"_s) + u"',@tm='"_s +
             after.text(u"TM"_s) + u"',@dw_id='"_s + after.text(u"DW_ID"_s) +
             u"',@abase=1,@cgj=1,@vipsj=1,@pfj=1,@sj=1;"_s;
  }
  return {};
}

}  // namespace

UnitRows::UnitRows(RecordSet& rows) : rows_(rows) {
  QObject::connect(&rows_, &RecordSet::newRecord, &source_, [this] { setDefaults(); });
  QObject::connect(&rows_, &RecordSet::validateField, &source_, [this](const QString& field) {
    if (field.compare("DW_ID"_L1, Qt::CaseInsensitive) != 0) return;
    rows_.setValue(u"dw_name"_s, unitName(rows_.text(u"DW_ID"_s)));
  });
}

void UnitRows::create() {
  rows_.create({{.name = u"T"_s, .type = FieldType::Integer, .label = translated("主单位")},
                {.name = u"WL_ID"_s, .size = 20},
                {.name = u"DW_ID"_s, .size = 2, .label = translated("单位代号")},
                {.name = u"dw_name"_s, .size = 10, .label = translated("单位")},
                {.name = u"ABASE"_s, .type = FieldType::Float, .label = translated("转换率")},
                {.name = u"SJ"_s, .type = FieldType::Float, .label = translated("零售价")},
                {.name = u"VIPSJ"_s, .type = FieldType::Float, .label = translated("会员价")},
                {.name = u"PFJ"_s, .type = FieldType::Float, .label = translated("批发价")},
                {.name = u"CGJ"_s, .type = FieldType::Float, .label = translated("采购价")},
                {.name = u"TM"_s, .size = 30, .label = translated("条码")},
                {.name = u"Y"_s, .type = FieldType::Integer, .label = translated("年")},
                {.name = u"COLORVALUE"_s, .type = FieldType::Integer},
                {.name = u"adw"_s, .type = FieldType::Integer},
                {.name = u"ADDFLAG"_s, .type = FieldType::Integer}});
}

void UnitRows::readNames(const QString& moduleCode) {
  if (!names_.isEmpty()) return;
  opensql(source_, moduleCode, u"select dw_id,dw_name from D1003"_s);
  for (source_.first(); !source_.eof(); source_.next()) {
    names_.insert(source_.text(u"dw_id"_s).trimmed().toUpper(), source_.text(u"dw_name"_s));
  }
}

void UnitRows::load(const QString& moduleCode, const QString& product) {
  readNames(moduleCode);
  opensql(source_, moduleCode,
          u"select *,0 AS ADDFLAG from D1801dw where wl_id='"_s + product + u"' order by T DESC,dw_id"_s);
}

void UnitRows::open(const QString& moduleCode, const QString& product) {
  load(moduleCode, product);
  rows_.disableControls();
  create();
  for (source_.first(); !source_.eof(); source_.next()) {
    rows_.append();
    for (int i = 0; i < rows_.fieldCount(); ++i) {
      const QString& name = rows_.field(i).name;
      if (source_.hasField(name)) rows_.setValue(name, source_.value(name));
    }
    rows_.post();
  }
  rows_.mergeChangeLog();
  rows_.first();
  rows_.enableControls();
}

void UnitRows::openCopy(const QString& moduleCode, const QString& product) {
  load(moduleCode, product);
  rows_.disableControls();
  create();
  for (source_.first(); !source_.eof(); source_.next()) {
    rows_.append();
    for (const QString& name :
         {u"T"_s, u"DW_ID"_s, u"ABASE"_s, u"SJ"_s, u"VIPSJ"_s, u"PFJ"_s, u"CGJ"_s, u"TM"_s}) {
      rows_.setValue(name, source_.value(name));
    }
    rows_.post();
  }
  rows_.first();
  rows_.enableControls();
}

void UnitRows::openEmpty(const QString& moduleCode) {
  readNames(moduleCode);
  create();
}

void UnitRows::setDefaults() {
  rows_.setValue(u"ADDFLAG"_s, 1);
  rows_.setValue(u"ABASE"_s, 1);
  for (const QString& price : {u"SJ"_s, u"VIPSJ"_s, u"PFJ"_s, u"CGJ"_s}) rows_.setValue(price, 0);
  // The first unit is the main one until the user says otherwise.
  rows_.setValue(u"T"_s, rows_.rowCount() <= 1 ? 1 : 0);
}

QString UnitRows::unitName(const QString& code) const {
  const QString known = names_.value(code.trimmed().toUpper());
  // A unit may have been added since they were read.
  return known.isEmpty() ? lookup::units().nameOf(code).value_or(QString()) : known;
}

QVariant UnitRows::savedValue(const QString& field) const {
  const QVariant value = rows_.value(field);
  if (!value.isNull() || rows_.field(rows_.fieldIndex(field)).type != FieldType::Float) return value;
  const QString unit = rows_.text(u"adw"_s);
  const std::vector<RecordSet::Change> changes = rows_.changes();
  const bool saved = isNew() || std::ranges::any_of(changes, [&](const RecordSet::Change& change) {
                       return After(rows_, change).text(u"adw"_s) == unit;
                     });
  return saved ? QVariant(0.0) : value;
}

bool UnitRows::isNew() const {
  return rows_.integer(u"ADDFLAG"_s) != 0;
}

bool UnitRows::moveToMain() {
  const int main = rows_.fieldIndex(u"T"_s);
  for (int row = 0; row < rows_.rowCount(); ++row) {
    if (rows_.valueAt(row, main).toInt() != 1) continue;
    rows_.moveTo(row);
    return true;
  }
  return false;
}

void UnitRows::check(const PointTo& pointTo) {
  if (rows_.state() == RecordSet::State::Insert && !rows_.isModified()) {
    rows_.cancel();  // Enter behind the last row appended it, and nothing was typed into it
  } else if (rows_.state() != RecordSet::State::Browse) {
    rows_.post();
  }
  if (rows_.isEmpty()) refuse("请在表格最少输入一种单位,且至少要标志一个主单位!");
  if (!rows_.hasChanges()) return;
  const int main = rows_.fieldIndex(u"T"_s);
  int mains = 0;
  for (int row = 0; row < rows_.rowCount(); ++row) mains += rows_.valueAt(row, main).toInt() == 1;
  if (mains != 1) refuse("每一商品必须定义一个主单位!,不可定义多个,也不可没有");
  moveToMain();
  // To four decimal places, halves to even.
  if (std::nearbyint(rows_.number(u"ABASE"_s) * 10000) != 10000) {
    DISPINFO(translated("主单位的转换率应该是  1  ,请更正!"), 5);
    pointTo(u"ABASE"_s);
    throw EAbort();
  }
  checkUnits(pointTo);
  rows_.tag = checkedAsUnits;
  checkDatamore(rows_, u"abase"_s, {});
}

// Lists join to the unit: without one the product would be lost.
void UnitRows::checkUnits(const PointTo& pointTo) {
  const int unit = rows_.fieldIndex(u"DW_ID"_s);
  for (int row = 0; row < rows_.rowCount(); ++row) {
    const QString code = rows_.textAt(row, unit).trimmed();
    if (lookup::units().nameOf(code)) continue;
    rows_.moveTo(row);
    DISPINFO(code.isEmpty() ? translated("单位不能为空!") : translated("单位【%1】不存在!").arg(code), 5);
    pointTo(u"DW_ID"_s);
    throw EAbort();
  }
}

QString UnitRows::statements(const QString& product) const {
  QString batch;
  for (const RecordSet::Change& change : rows_.changes()) batch += statementOf(rows_, change, product);
  return batch;
}

}  // namespace goodsbook
