#include "host/sheet/zip_archive.h"

#include <zip.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "host/sheet/sheet_errors.h"

namespace goodsbook::sheet {
namespace {

// Sheets pack well, bombs better.
constexpr zip_uint64_t neverTooBig = 48ULL << 20;
constexpr zip_uint64_t alwaysTooBig = 2ULL << 30;
constexpr qint64 longestPiece = 8LL << 20;

}  // namespace

ZipEntry::ZipEntry(zip_file* file, qint64 size, QString path)
    : file_(file), size_(size), path_(std::move(path)) {
  open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

ZipEntry::~ZipEntry() {
  zip_fclose(file_);
}

void ZipEntry::check() const {
  if (failure_ == Failure::TooBig) failTooBig(path_);
  if (failure_ == Failure::Damaged) failDamaged(path_);
}

qint64 ZipEntry::readData(char* data, qint64 size) {
  if (failure_ != Failure::None) return -1;
  const qint64 got = zip_fread(file_, data, static_cast<zip_uint64_t>(size));
  if (got < 0) failure_ = Failure::Damaged;
  if (got <= 0) return -1;
  total_ += got;
  piece_ += got;
  if (piece_ > longestPiece) failure_ = Failure::TooBig;
  if (total_ > size_) failure_ = Failure::Damaged;
  return failure_ == Failure::None ? got : -1;
}

ZipArchive::ZipArchive(const QString& path) : path_(path) {
  int error = 0;
  archive_ = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &error);
  if (archive_ == nullptr) failDamaged(path);
}

ZipArchive::~ZipArchive() {
  zip_discard(archive_);
}

bool ZipArchive::has(const QString& name) const {
  return zip_name_locate(archive_, name.toUtf8().constData(), ZIP_FL_NOCASE) >= 0;
}

std::unique_ptr<ZipEntry> ZipArchive::open(const QString& name, int mostPacking) const {
  const zip_int64_t index = zip_name_locate(archive_, name.toUtf8().constData(), ZIP_FL_NOCASE);
  if (index < 0) failDamaged(path_);
  zip_stat_t entry{};
  if (zip_stat_index(archive_, static_cast<zip_uint64_t>(index), 0, &entry) != 0) failDamaged(path_);
  if ((entry.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && entry.encryption_method != ZIP_EM_NONE)
    failPassword(path_);
  // The packed size may be a lie, but nothing takes more than the whole file.
  const auto whole = static_cast<zip_uint64_t>(QFileInfo(path_).size());
  const zip_uint64_t most = std::max(
      neverTooBig, std::min<zip_uint64_t>(entry.comp_size, whole) * static_cast<zip_uint64_t>(mostPacking));
  if (entry.size > std::min(most, alwaysTooBig)) failTooBig(path_);
  zip_file_t* file = zip_fopen_index(archive_, static_cast<zip_uint64_t>(index), 0);
  if (file == nullptr) failDamaged(path_);
  return std::make_unique<ZipEntry>(file, static_cast<qint64>(entry.size), path_);
}

}  // namespace goodsbook::sheet
