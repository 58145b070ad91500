#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

namespace goodsbook {

// Lines from a file descriptor, told between other events.
class LineReader : public QObject {
  Q_OBJECT

 public:
  explicit LineReader(int descriptor, QObject* parent = nullptr);

 Q_SIGNALS:
  void line(const QByteArray& text);  // without the line's end
  void ended();                       // once, behind the last line

 private:
  void read();
  void tellLines(bool last);

  QSocketNotifier notifier_;
  QByteArray waiting_;
};

}  // namespace goodsbook
