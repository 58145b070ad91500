#include "host/sheet/biff_records.h"

#include <unicode/ucnv.h>

#include <QtEndian>
#include <algorithm>
#include <memory>

namespace goodsbook::sheet {
namespace {

constexpr qsizetype recordHead = 4;

template <class Number>
Number readAt(QByteArrayView bytes, qsizetype at) {
  if (at < 0 || at + static_cast<qsizetype>(sizeof(Number)) > bytes.size()) return {};
  return qFromLittleEndian<Number>(bytes.data() + at);
}

}  // namespace

bool BiffRecords::next() {
  const QByteArrayView all(*stream_);
  if (next_ < 0 || next_ + recordHead > all.size()) {
    cut_ = next_ != all.size();
    return false;
  }
  at_ = next_;
  type_ = readAt<quint16>(all, at_);
  const qsizetype length = readAt<quint16>(all, at_ + 2);
  cut_ = at_ + recordHead + length > all.size();
  if (cut_) return false;
  body_ = all.sliced(at_ + recordHead, length);
  next_ = at_ + recordHead + length;
  return true;
}

quint8 BiffRecords::byte(qsizetype at) const {
  return readAt<quint8>(body_, at);
}
quint16 BiffRecords::word(qsizetype at) const {
  return readAt<quint16>(body_, at);
}
quint32 BiffRecords::number(qsizetype at) const {
  return readAt<quint32>(body_, at);
}
double BiffRecords::real(qsizetype at) const {
  return readAt<double>(body_, at);
}

std::vector<QByteArrayView> BiffRecords::withContinuations(qsizetype offset) const {
  std::vector<QByteArrayView> parts{body_.sliced(std::min(offset, body_.size()))};
  BiffRecords following(*stream_, next_);
  while (following.next() && following.type() == continuation) parts.push_back(following.body());
  return parts;
}

QString fromCodePage(QByteArrayView bytes, int codePage) {
  struct Close {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
  };
  constexpr int utf16 = 1200;
  if (codePage == utf16) codePage = 936;
  const QByteArray name = codePage == 936 ? QByteArray("gb18030") : "windows-" + QByteArray::number(codePage);
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UConverter, Close> converter(ucnv_open(name.constData(), &status));
  if (U_FAILURE(status)) return QString::fromLatin1(bytes);
  QString text(bytes.size() + 1, u'\0');
  const int32_t length =
      ucnv_toUChars(converter.get(), reinterpret_cast<UChar*>(text.data()), static_cast<int32_t>(text.size()),
                    bytes.data(), static_cast<int32_t>(bytes.size()), &status);
  if (U_FAILURE(status)) return QString::fromLatin1(bytes);
  text.truncate(length);
  return text;
}

bool BiffText::haveBytes() {
  while (part_ < parts_.size() && at_ >= parts_[part_].size()) {
    ++part_;
    at_ = 0;
  }
  return part_ < parts_.size();
}

bool BiffText::atEnd() const {
  return part_ >= parts_.size() || (part_ + 1 == parts_.size() && at_ >= parts_[part_].size());
}

quint8 BiffText::byte() {
  return haveBytes() ? static_cast<quint8>(parts_[part_][at_++]) : quint8{0};
}

quint16 BiffText::word() {
  const quint16 low = byte();
  return static_cast<quint16>(low | byte() << 8);
}

quint32 BiffText::number() {
  const quint32 low = word();
  return low | quint32{word()} << 16;
}

void BiffText::skip(quint64 bytes) {
  while (bytes > 0 && haveBytes()) {
    const auto here = std::min<quint64>(bytes, static_cast<quint64>(parts_[part_].size() - at_));
    at_ += static_cast<qsizetype>(here);
    bytes -= here;
  }
}

QString BiffText::text(bool shortLength) {
  constexpr quint8 wideMark = 1, readingsMark = 4, richMark = 8;
  int left = shortLength ? byte() : word();
  quint8 mark = byte();
  const quint64 runs = (mark & richMark) != 0 ? word() : 0;
  const quint64 readings = (mark & readingsMark) != 0 ? number() : 0;
  QString text;
  while (left > 0) {
    if (part_ < parts_.size() && at_ >= parts_[part_].size()) {
      if (!haveBytes()) break;
      mark = byte();
    }
    if (part_ >= parts_.size()) break;
    const qsizetype size = (mark & wideMark) != 0 ? 2 : 1;
    const qsizetype here = std::min<qsizetype>((parts_[part_].size() - at_) / size, left);
    if (here == 0) {  // half a character before a continuation
      at_ = parts_[part_].size();
      continue;
    }
    const char* from = parts_[part_].data() + at_;
    if (size == 1) {
      text += QString::fromLatin1(from, here);
    } else {
      for (qsizetype i = 0; i < here; ++i) text += QChar(qFromLittleEndian<quint16>(from + i * 2));
    }
    at_ += here * size;
    left -= static_cast<int>(here);
  }
  skip(runs * 4 + readings);
  return text;
}

}  // namespace goodsbook::sheet
