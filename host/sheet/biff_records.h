#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace goodsbook::sheet {

// The records of a workbook stream: type, length, body.
class BiffRecords {
 public:
  static constexpr quint16 continuation = 0x3C;

  explicit BiffRecords(const QByteArray& stream, qsizetype at = 0) : stream_(&stream), next_(at) {}

  bool next();  // false at the end, and where the stream is cut off: isCut() then
  bool isCut() const { return cut_; }
  quint16 type() const { return type_; }
  qsizetype position() const { return at_; }  // where the record begins
  QByteArrayView body() const { return body_; }
  // Of the body; 0 behind its end.
  quint8 byte(qsizetype at) const;
  quint16 word(qsizetype at) const;
  quint32 number(qsizetype at) const;
  double real(qsizetype at) const;
  // This body and those of the continuations that follow it, from `offset` on.
  std::vector<QByteArrayView> withContinuations(qsizetype offset) const;

 private:
  const QByteArray* stream_;
  qsizetype next_;
  qsizetype at_ = 0;
  quint16 type_ = 0;
  QByteArrayView body_;
  bool cut_ = false;
};

// Text encoded by a code page of the file, for formats before 1997.
QString fromCodePage(QByteArrayView bytes, int codePage);

// Values that go on in continuations: a text that is cut there starts anew with a mark of how it is encoded.
class BiffText {
 public:
  explicit BiffText(std::vector<QByteArrayView> parts) : parts_(std::move(parts)) {}

  bool atEnd() const;
  quint16 word();
  quint32 number();
  // Length, mark, characters; what belongs to rich texts and readings is passed over. `shortLength`: of one
  // byte.
  QString text(bool shortLength = false);

 private:
  bool haveBytes();  // goes on to the next part where this one is at its end
  quint8 byte();
  void skip(quint64 bytes);

  std::vector<QByteArrayView> parts_;
  std::size_t part_ = 0;
  qsizetype at_ = 0;
};

}  // namespace goodsbook::sheet
