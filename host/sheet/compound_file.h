#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace goodsbook::sheet {

// The file system inside older office files: named streams in chains of sectors. Throws SheetError where a
// chain leads out of the file or in a ring.
class CompoundFile {
 public:
  CompoundFile(QByteArray bytes, QString path);

  static QByteArray signature();
  bool has(const QString& name) const;
  QByteArray stream(const QString& name) const;  // empty when there is none

 private:
  struct Entry {
    QString name;
    quint8 type;
    quint32 start;
    quint64 size;
  };

  void readTable();
  void readEntries();
  const Entry* find(const QString& name) const;
  QByteArray sector(quint32 number) const;  // the file's last one may be short
  QByteArray wholeSector(quint32 number) const;
  QByteArray chain(quint32 start, quint64 size) const;  // size 0: to its end
  QByteArray smallChain(quint32 start, quint64 size) const;
  quint32 number(qsizetype at) const;  // of four bytes in the head

  QByteArray bytes_;
  QString path_;
  qsizetype sectorSize_ = 0;
  std::vector<quint32> next_;       // for each sector the one that follows it
  std::vector<quint32> nextSmall_;  // the same for the small sectors
  QByteArray small_;                // what the small sectors are parts of
  std::vector<Entry> entries_;
};

}  // namespace goodsbook::sheet
