#include "host/data/record_file.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDataStream>
#include <QFile>
#include <QSaveFile>
#include <bit>
#include <stdexcept>

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(RecordSet)
};

constexpr quint32 magic = 0x53524247;  // "GBRS" in the file
constexpr quint32 formatVersion = 1;
constexpr QCryptographicHash::Algorithm hashing = QCryptographicHash::Sha256;
constexpr quint32 mostFields = 10'000;

[[noreturn]] void fail(const QString& text) {
  throw std::runtime_error(text.toStdString());
}

[[noreturn]] void failDamaged(const QString& path) {
  fail(Texts::tr("文件已损坏：%1").arg(path));
}

void setUp(QDataStream& stream) {
  stream.setVersion(QDataStream::Qt_6_0);
  stream.setByteOrder(QDataStream::LittleEndian);
}

bool isBytes(FieldType type) {
  return type == FieldType::Text || type == FieldType::Blob;
}

void writeCell(QDataStream& out, FieldType type, const Cell& cell) {
  out << static_cast<quint8>(cell.null ? 0 : 1);
  if (cell.null) return;
  if (isBytes(type)) {
    out << QByteArray::fromRawData(cell.bytes.data(), static_cast<qsizetype>(cell.bytes.size()));
  } else {
    out << (type == FieldType::Float ? std::bit_cast<qint64>(cell.real) : static_cast<qint64>(cell.integer));
  }
}

QByteArray encode(const RowTable& table, const RowOrder& order) {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  setUp(out);
  const auto& fields = table.fields();
  out << static_cast<quint32>(fields.size());
  for (const auto& field : fields) {
    out << field.name << static_cast<quint8>(field.type) << static_cast<qint32>(field.size) << field.label
        << field.displayFormat;
  }
  out << static_cast<quint32>(order.size());
  for (int position = 0; position < order.size(); ++position) {
    const RowRef row = order.at(position);
    for (std::size_t i = 0; i < fields.size(); ++i) {
      writeCell(out, fields[i].type, table.cell(row, static_cast<int>(i)));
    }
  }
  return bytes;
}

// A row as it stands in the file.
class FileRow : public engine::Row {
 public:
  explicit FileRow(const std::vector<Field>& fields) : fields_(fields), cells_(fields.size()) {}

  void read(QDataStream& in) {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
      quint8 present = 0;
      in >> present;
      auto& cell = cells_[i];
      cell = Cell();
      cell.null = present == 0;
      if (cell.null) continue;
      if (isBytes(fields_[i].type)) {
        in >> cell.held;
      } else {
        qint64 bits = 0;
        in >> bits;
        cell.integer = bits;
      }
    }
  }

  bool isNull(int column) const override { return at(column).null; }
  std::int64_t integer(int column) const override { return at(column).integer; }
  double real(int column) const override { return std::bit_cast<double>(at(column).integer); }
  std::string_view text(int column) const override {
    const auto& held = at(column).held;
    return {held.constData(), static_cast<std::size_t>(held.size())};
  }
  std::span<const std::byte> blob(int column) const override {
    const auto bytes = text(column);
    return std::as_bytes(std::span(bytes.data(), bytes.size()));
  }

 private:
  const Cell& at(int column) const { return cells_[static_cast<std::size_t>(column)]; }

  const std::vector<Field>& fields_;
  std::vector<Cell> cells_;
};

std::vector<Field> readFields(QDataStream& in, const QString& path) {
  quint32 count = 0;
  in >> count;
  if (in.status() != QDataStream::Ok || count > mostFields) failDamaged(path);
  std::vector<Field> fields(count);
  for (auto& field : fields) {
    quint8 type = 0;
    qint32 size = 0;
    in >> field.name >> type >> size >> field.label >> field.displayFormat;
    if (in.status() != QDataStream::Ok || type > static_cast<quint8>(FieldType::Blob)) failDamaged(path);
    field.type = static_cast<FieldType>(type);
    field.size = size;
  }
  return fields;
}

}  // namespace

void writeRecordFile(const QString& path, const RowTable& table, const RowOrder& order) {
  const QByteArray payload = encode(table, order);
  QByteArray head;
  QDataStream out(&head, QIODevice::WriteOnly);
  setUp(out);
  out << magic << formatVersion << QCryptographicHash::hash(payload, hashing);
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(head) != head.size() ||
      file.write(payload) != payload.size() || !file.commit()) {
    fail(Texts::tr("无法写入文件：%1（%2）").arg(path, file.errorString()));
  }
}

RowTable readRecordFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    fail(Texts::tr("无法读取文件：%1（%2）").arg(path, file.errorString()));
  const QByteArray bytes = file.readAll();
  QDataStream in(bytes);
  setUp(in);
  quint32 foundMagic = 0;
  quint32 version = 0;
  QByteArray hash;
  in >> foundMagic >> version;
  if (in.status() != QDataStream::Ok || foundMagic != magic) failDamaged(path);
  if (version > formatVersion) fail(Texts::tr("文件由更新版本的程序写成：%1").arg(path));
  in >> hash;
  if (in.status() != QDataStream::Ok) failDamaged(path);
  const QByteArrayView payload = QByteArrayView(bytes).sliced(in.device()->pos());
  QCryptographicHash hasher(hashing);
  hasher.addData(payload);
  if (hasher.result() != hash) failDamaged(path);

  RowTable table(readFields(in, path));
  quint32 rows = 0;
  in >> rows;
  FileRow row(table.fields());
  for (quint32 i = 0; i < rows; ++i) {
    row.read(in);
    if (in.status() != QDataStream::Ok) failDamaged(path);
    table.appendLoaded(row);
  }
  if (!in.atEnd()) failDamaged(path);
  table.finishLoad();
  return table;
}

}  // namespace goodsbook
