#include "host/sheet/compound_file.h"

#include <QtEndian>

#include "host/sheet/sheet_errors.h"

namespace goodsbook::sheet {
namespace {

constexpr qsizetype headSize = 512;
constexpr qsizetype entrySize = 128;
constexpr qsizetype smallSectorSize = 64;
constexpr quint64 smallLimit = 4096;        // shorter streams lie in small sectors
constexpr quint32 lastNumber = 0xFFFFFFFA;  // from here on numbers are marks

quint32 number32(const QByteArray& bytes, qsizetype at) {
  return qFromLittleEndian<quint32>(bytes.constData() + at);
}

quint16 number16(const QByteArray& bytes, qsizetype at) {
  return qFromLittleEndian<quint16>(bytes.constData() + at);
}

}  // namespace

QByteArray CompoundFile::signature() {
  return QByteArray::fromHex("D0CF11E0A1B11AE1");
}

CompoundFile::CompoundFile(QByteArray bytes, QString path)
    : bytes_(std::move(bytes)), path_(std::move(path)) {
  if (bytes_.size() < headSize || !bytes_.startsWith(signature())) failDamaged(path_);
  const int shift = number16(bytes_, 30);
  if (shift != 9 && shift != 12) failDamaged(path_);
  sectorSize_ = qsizetype{1} << shift;
  readTable();
  readEntries();
}

quint32 CompoundFile::number(qsizetype at) const {
  return number32(bytes_, at);
}

QByteArray CompoundFile::sector(quint32 number) const {
  const qsizetype at = (qsizetype{number} + 1) * sectorSize_;
  if (number >= lastNumber || at >= bytes_.size()) failDamaged(path_);
  return bytes_.mid(at, sectorSize_);
}

QByteArray CompoundFile::wholeSector(quint32 number) const {
  QByteArray whole = sector(number);
  if (whole.size() < sectorSize_) failDamaged(path_);
  return whole;
}

void CompoundFile::readTable() {
  const auto sectors = static_cast<std::size_t>(bytes_.size() / sectorSize_ + 1);
  const qsizetype inSector = sectorSize_ / 4;
  std::vector<quint32> parts;
  const auto take = [&](quint32 part) {
    if (part < lastNumber) parts.push_back(part);
    if (parts.size() > sectors) failDamaged(path_);
  };
  for (qsizetype i = 0; i < 109; ++i) take(number(76 + i * 4));
  quint32 more = number(68);
  for (std::size_t steps = 0; more < lastNumber; ++steps) {
    if (steps > sectors) failDamaged(path_);
    const QByteArray list = wholeSector(more);
    for (qsizetype i = 0; i + 1 < inSector; ++i) take(number32(list, i * 4));
    more = number32(list, (inSector - 1) * 4);
  }
  next_.reserve(parts.size() * static_cast<std::size_t>(inSector));
  for (const quint32 part : parts) {
    const QByteArray list = wholeSector(part);
    for (qsizetype i = 0; i < inSector; ++i) next_.push_back(number32(list, i * 4));
  }
}

QByteArray CompoundFile::chain(quint32 start, quint64 size) const {
  const auto most = static_cast<quint64>(bytes_.size());
  if (size > most) failDamaged(path_);
  QByteArray all;
  all.reserve(static_cast<qsizetype>(size));
  for (quint32 at = start; at < lastNumber; at = next_[at]) {
    if (at >= next_.size() || static_cast<quint64>(all.size()) > most) failDamaged(path_);
    // Some writers end the file behind the contents of its last sector.
    all += size > 0 ? sector(at) : wholeSector(at);
    if (size > 0 && static_cast<quint64>(all.size()) >= size) break;
    if (all.size() % sectorSize_ != 0) failDamaged(path_);
  }
  if (size == 0) return all;
  if (static_cast<quint64>(all.size()) < size) failDamaged(path_);
  all.truncate(static_cast<qsizetype>(size));
  return all;
}

QByteArray CompoundFile::smallChain(quint32 start, quint64 size) const {
  QByteArray all;
  for (quint32 at = start; static_cast<quint64>(all.size()) < size; at = nextSmall_[at]) {
    if (at >= nextSmall_.size() || qsizetype{at} * smallSectorSize >= small_.size()) failDamaged(path_);
    all += small_.mid(qsizetype{at} * smallSectorSize, smallSectorSize);
  }
  all.truncate(static_cast<qsizetype>(size));
  return all;
}

void CompoundFile::readEntries() {
  const QByteArray list = chain(number(48), 0);
  for (qsizetype at = 0; at + entrySize <= list.size(); at += entrySize) {
    const QByteArray entry = list.mid(at, entrySize);
    const int length = std::min<int>(number16(entry, 64) / 2, 32);
    QString name;
    for (int i = 0; i + 1 < length; ++i) name += QChar(number16(entry, qsizetype{i} * 2));
    entries_.push_back({name, static_cast<quint8>(entry.at(66)), number32(entry, 116), number32(entry, 120)});
  }
  if (entries_.empty()) failDamaged(path_);
  const quint32 smallTable = number(60);
  if (smallTable >= lastNumber) return;
  const QByteArray table = chain(smallTable, 0);
  for (qsizetype at = 0; at + 4 <= table.size(); at += 4) nextSmall_.push_back(number32(table, at));
  if (entries_.front().size > 0) small_ = chain(entries_.front().start, entries_.front().size);
}

const CompoundFile::Entry* CompoundFile::find(const QString& name) const {
  constexpr quint8 streamType = 2;
  for (const Entry& entry : entries_) {
    if (entry.type == streamType && entry.name.compare(name, Qt::CaseInsensitive) == 0) return &entry;
  }
  return nullptr;
}

bool CompoundFile::has(const QString& name) const {
  return find(name) != nullptr;
}

QByteArray CompoundFile::stream(const QString& name) const {
  const Entry* entry = find(name);
  if (entry == nullptr || entry->size == 0) return {};
  return entry->size < smallLimit ? smallChain(entry->start, entry->size) : chain(entry->start, entry->size);
}

}  // namespace goodsbook::sheet
