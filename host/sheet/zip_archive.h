#pragma once

#include <QIODevice>
#include <QString>
#include <memory>

struct zip;
struct zip_file;

namespace goodsbook::sheet {

// One file inside a zip archive, unpacked as it is read. Fails as damaged when it is not what the archive's
// list says it is, in size or checksum.
class ZipEntry : public QIODevice {
 public:
  ZipEntry(zip_file* file, qint64 size, QString path);
  ~ZipEntry() override;
  bool isSequential() const override { return true; }

  // The reader got through one piece of markup; one that takes megabytes is too big.
  void endPiece() { piece_ = 0; }
  // Throws what reading met: errors cannot pass through the readers of QIODevice.
  void check() const;

 protected:
  qint64 readData(char* data, qint64 size) override;
  qint64 writeData(const char*, qint64) override { return -1; }

 private:
  enum class Failure { None, TooBig, Damaged };

  zip_file* file_;
  qint64 size_;
  QString path_;
  qint64 total_ = 0;
  qint64 piece_ = 0;
  Failure failure_ = Failure::None;
};

// A zip archive, read only. Throws SheetError when the file is none, is cut off or locked.
class ZipArchive {
 public:
  static constexpr int usualPacking = 200;

  explicit ZipArchive(const QString& path);
  ~ZipArchive();
  ZipArchive(const ZipArchive&) = delete;
  ZipArchive& operator=(const ZipArchive&) = delete;

  bool has(const QString& name) const;
  // Throws as damaged when it is not there, and before a byte is unpacked as too big when it is far more than
  // a sheet's: beyond 48 MB, more than `mostPacking` times what it takes packed.
  std::unique_ptr<ZipEntry> open(const QString& name, int mostPacking = usualPacking) const;
  const QString& path() const { return path_; }

 private:
  QString path_;
  zip* archive_ = nullptr;
};

}  // namespace goodsbook::sheet
