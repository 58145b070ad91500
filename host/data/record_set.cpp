#include "host/data/record_set.h"

#include <algorithm>
#include <stdexcept>

#include "host/data/field_value.h"
#include "host/data/record_file.h"
#include "host/data/record_set_private.h"

namespace goodsbook {
namespace {

FieldType fieldTypeOf(engine::Type type) {
  switch (type) {
    case engine::Type::Bit:
      return FieldType::Boolean;
    case engine::Type::Integer:
      return FieldType::Integer;
    case engine::Type::Float:
      return FieldType::Float;
    case engine::Type::DateTime:
      return FieldType::DateTime;
    case engine::Type::Text:
      return FieldType::Text;
    case engine::Type::Blob:
      return FieldType::Blob;
  }
  return FieldType::Text;
}

bool sameName(const QString& a, const QString& b) {
  return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
}

bool hasName(const std::vector<Field>& fields, const QString& name) {
  return std::any_of(fields.begin(), fields.end(),
                     [&](const Field& field) { return sameName(field.name, name); });
}

// Columns without a name and names that stand twice get one of their own, so that every value can be reached.
QString uniqueName(const std::vector<Field>& fields, const QString& name) {
  const QString stem = name.isEmpty() ? QStringLiteral("COLUMN") : name;
  QString candidate = name.isEmpty() ? stem + QString::number(fields.size() + 1) : name;
  for (int i = 1; hasName(fields, candidate); ++i) candidate = stem + u'_' + QString::number(i);
  return candidate;
}

}  // namespace

// --- structure

RecordSet::RecordSet(QObject* parent) : QObject(parent), d_(std::make_unique<Private>(*this)) {}

RecordSet::~RecordSet() = default;

void RecordSet::create(std::vector<Field> fields) {
  {
    const Private::Reset reset(*d_);
    d_->drop();
    d_->replaceRows(RowTable(std::move(fields)));
  }
  d_->tellOpened();
}

void RecordSet::close() {
  if (d_->state == State::Closed && !d_->loading) return;
  {
    const Private::Reset reset(*d_);
    d_->drop();
  }
  Q_EMIT closed();
}

bool RecordSet::isOpen() const {
  return d_->state != State::Closed;
}

RecordSet::State RecordSet::state() const {
  return d_->state;
}

int RecordSet::fieldCount() const {
  return static_cast<int>(d_->table.fields().size());
}

int RecordSet::fieldIndex(const QString& name) const {
  const auto& fields = d_->table.fields();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (sameName(fields[i].name, name)) return static_cast<int>(i);
  }
  return -1;
}

const Field& RecordSet::field(int index) const {
  return d_->table.fields().at(static_cast<std::size_t>(index));
}

void RecordSet::setFieldFormat(const QString& name, const QString& displayFormat) {
  d_->table.fields()[static_cast<std::size_t>(d_->indexOf(name))].displayFormat = displayFormat;
  const Private::Reset reset(*d_);
}

void RecordSet::declareFields(std::vector<Field> fields) {
  d_->declared = std::move(fields);
}

const std::vector<Field>& RecordSet::declaredFields() const {
  return d_->declared;
}

// --- loading

void RecordSet::beginLoad(std::span<const engine::Column> columns) {
  d_->beginReset();
  d_->drop();
  std::vector<Field> fields;
  for (const auto& column : columns) {
    Field field;
    field.name = uniqueName(fields, QString::fromStdString(column.name));
    field.type = fieldTypeOf(column.type);
    field.size = column.width;
    for (const auto& declared : d_->declared) {
      if (!sameName(declared.name, field.name)) continue;
      field.label = declared.label;
      field.displayFormat = declared.displayFormat;
      if (declared.size > 0) field.size = declared.size;
    }
    fields.push_back(std::move(field));
  }
  d_->table = RowTable(std::move(fields));
  d_->loading = true;
}

void RecordSet::appendLoaded(const engine::Row& row) {
  d_->table.appendLoaded(row);
}

void RecordSet::publishLoaded() {
  const std::uint32_t from = d_->published;
  const std::uint32_t to = d_->table.loadedCount();
  d_->published = to;
  if (d_->state == State::Closed) {
    d_->state = State::Browse;
    d_->base = d_->baseline = RowOrder::asLoaded(to);
    d_->resolveFilter();
    d_->rebuildView();
    d_->setCurrent(rowCount() > 0 ? 0 : -1);
    d_->endReset();
    d_->tellOpened();
    return;
  }
  if (from == to) return;
  std::vector<RowRef> added;
  if (d_->view) {
    for (RowRef row = from; row < to; ++row) {
      if (d_->passes(row)) added.push_back(row);
    }
  }
  const int count = d_->view ? static_cast<int>(added.size()) : static_cast<int>(to - from);
  const int first = rowCount();
  const bool tells = d_->tellsViews() && count > 0;
  if (tells) Q_EMIT aboutToInsertRows(first, first + count - 1);
  d_->base.appendLoaded(from, to);
  d_->baseline.appendLoaded(from, to);
  for (const RowRef row : added) d_->view->insert(d_->view->size(), row);
  if (tells) Q_EMIT rowsInserted();
  if (!d_->hasCurrent() && rowCount() > 0) d_->goTo(0);
}

void RecordSet::endLoad() {
  if (!d_->loading) return;
  d_->table.finishLoad();
  if (d_->state == State::Closed) {
    d_->loading = false;
    publishLoaded();
    return;
  }
  publishLoaded();
  d_->loading = false;
  if (d_->sortField.isEmpty()) return;
  const bool notMovedYet = d_->current == 0 && !d_->isEditing();
  d_->rearrange();
  if (notMovedYet) d_->goTo(0);
}

bool RecordSet::isLoading() const {
  return d_->loading;
}

quint64 RecordSet::loadEpoch() const {
  return d_->epoch;
}

void RecordSet::waitForAll() {
  if (d_->loading) Q_EMIT waitRequested();
}

// --- values

QVariant RecordSet::value(const QString& fieldName) const {
  const int index = d_->indexOf(fieldName);
  return d_->hasCurrent() ? valueAt(d_->current, index) : QVariant();
}

QString RecordSet::text(const QString& fieldName) const {
  const int index = d_->indexOf(fieldName);
  return d_->hasCurrent() ? textAt(d_->current, index) : QString();
}

qint64 RecordSet::integer(const QString& fieldName) const {
  const QVariant found = value(fieldName);
  return found.typeId() == QMetaType::Double ? static_cast<qint64>(found.toDouble()) : found.toLongLong();
}

double RecordSet::number(const QString& fieldName) const {
  return value(fieldName).toDouble();
}

bool RecordSet::flag(const QString& fieldName) const {
  const QVariant found = value(fieldName);
  return found.typeId() == QMetaType::QString ? found.toString().trimmed() == u"1" : found.toDouble() != 0;
}

bool RecordSet::isNull(const QString& fieldName) const {
  return !value(fieldName).isValid();
}

QVariant RecordSet::valueAt(int row, int fieldIndex) const {
  return fromStored(field(fieldIndex).type, d_->stored(row, fieldIndex));
}

QString RecordSet::textAt(int row, int fieldIndex, const QString& format) const {
  return shownText(field(fieldIndex), d_->stored(row, fieldIndex), format);
}

double RecordSet::sum(const QString& fieldName) const {
  const int index = d_->indexOf(fieldName);
  const_cast<RecordSet*>(this)->waitForAll();  // the rows that are still to come belong to the set
  const FieldType type = field(index).type;
  double total = 0;
  for (int row = 0; row < rowCount(); ++row) {
    if (d_->isEditing() && row == d_->current) {
      total += valueAt(row, index).toDouble();
      continue;
    }
    const Cell cell = d_->table.cell(d_->rows().at(row), index);
    if (cell.null) continue;
    if (type == FieldType::Text) {
      total +=
          QByteArray::fromRawData(cell.bytes.data(), static_cast<qsizetype>(cell.bytes.size())).toDouble();
    } else {
      total += type == FieldType::Float ? cell.real : static_cast<double>(cell.integer);
    }
  }
  return total;
}

qint64 RecordSet::memoryBytes() const {
  std::size_t total = d_->table.memoryBytes() + d_->base.memoryBytes();
  if (d_->view) total += d_->view->memoryBytes();
  return static_cast<qint64>(total);
}

// --- files and copies

void RecordSet::saveToFile(const QString& path) const {
  const_cast<RecordSet*>(this)->waitForAll();
  writeRecordFile(path, d_->table, d_->postedRows());
}

void RecordSet::loadFromFile(const QString& path) {
  RowTable table = readRecordFile(path);
  {
    const Private::Reset reset(*d_);
    d_->drop();
    d_->replaceRows(std::move(table));
  }
  d_->tellOpened();
}

void RecordSet::adopt(RecordSet& loaded) {
  RowTable table = std::move(loaded.d_->table);
  loaded.close();
  {
    const Private::Reset reset(*d_);
    d_->drop();
    d_->replaceRows(std::move(table));
  }
  d_->tellOpened();
}

void RecordSet::assignFrom(const RecordSet& other) {
  if (!other.isOpen()) {
    close();
    return;
  }
  const_cast<RecordSet&>(other).waitForAll();
  RowTable table = other.d_->table;
  RowOrder order = other.d_->postedRows();
  {
    const Private::Reset reset(*d_);
    d_->drop();
    d_->sortField.clear();
    d_->filterText.clear();
    d_->filtered = false;
    d_->replaceRows(std::move(table));
    d_->base = d_->baseline = std::move(order);
    d_->setCurrent(rowCount() > 0 ? 0 : -1);
  }
  d_->tellOpened();
}

}  // namespace goodsbook
