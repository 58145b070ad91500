#include "app/commands/line_reader.h"

#include <unistd.h>

#include <array>
#include <cerrno>

namespace goodsbook {

LineReader::LineReader(int descriptor, QObject* parent)
    : QObject(parent), notifier_(descriptor, QSocketNotifier::Read) {
  connect(&notifier_, &QSocketNotifier::activated, this, &LineReader::read);
}

void LineReader::read() {
  std::array<char, 65536> bytes{};
  const ssize_t count = ::read(static_cast<int>(notifier_.socket()), bytes.data(), bytes.size());
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count <= 0) {
    notifier_.setEnabled(false);
    tellLines(true);
    Q_EMIT ended();
    return;
  }
  waiting_.append(bytes.data(), count);
  tellLines(false);
}

void LineReader::tellLines(bool last) {
  qsizetype start = 0;
  for (qsizetype end = waiting_.indexOf('\n'); end >= 0; end = waiting_.indexOf('\n', start)) {
    Q_EMIT line(waiting_.mid(start, end - start));
    start = end + 1;
  }
  waiting_.remove(0, start);
  if (last && !waiting_.isEmpty()) Q_EMIT line(std::exchange(waiting_, {}));
}

}  // namespace goodsbook
