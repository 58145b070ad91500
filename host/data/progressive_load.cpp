#include "host/data/progressive_load.h"

#include <QElapsedTimer>
#include <QTimer>
#include <limits>
#include <utility>

#include "host/data/database.h"
#include "host/data/errors.h"

namespace goodsbook {
namespace {

constexpr int firstRows = 200;
constexpr int sliceMs = 8;
constexpr int waitSliceMs = 50;  // between two calls of the hook while somebody waits
constexpr int rowsBetweenLooks = 64;
constexpr int anyNumber = std::numeric_limits<int>::max();

}  // namespace

ProgressiveLoad::ProgressiveLoad(RecordSet& rows, QObject* parent)
    : QObject(parent), rows_(&rows), timer_(new QTimer(this)) {
  timer_->setInterval(0);
  connect(timer_, &QTimer::timeout, this, &ProgressiveLoad::slice);
  connect(&rows, &RecordSet::waitRequested, this, &ProgressiveLoad::waitForAll);
}

ProgressiveLoad::~ProgressiveLoad() {
  cancel();
}

void ProgressiveLoad::start(Database& database, const QString& select) {
  start(database.openCursor(select));
}

void ProgressiveLoad::start(std::unique_ptr<engine::Cursor> cursor) {
  cancel();
  count_ = 0;
  cursor_ = std::move(cursor);
  rows_->beginLoad(cursor_->columns());
  epoch_ = rows_->loadEpoch();
  bool more = false;
  try {
    more = bring(anyNumber, firstRows);
  } catch (...) {
    end();
    throw;
  }
  if (isStale() || !cursor_) return;  // a handler of opened() has begun something else
  Q_EMIT progress(count_);
  if (more) {
    timer_->start();
    return;
  }
  end();
  Q_EMIT finished();
}

bool ProgressiveLoad::isStale() const {
  return !rows_ || rows_->loadEpoch() != epoch_;
}

bool ProgressiveLoad::bring(int milliseconds, int atMost) {
  QElapsedTimer clock;
  clock.start();
  bool more = true;
  for (int i = 0; i < atMost && (more = cursor_->next()); ++i) {
    rows_->appendLoaded(cursor_->row());
    ++count_;
    if (i % rowsBetweenLooks == rowsBetweenLooks - 1 && clock.elapsed() >= milliseconds) break;
  }
  rows_->publishLoaded();
  return more;
}

void ProgressiveLoad::slice() {
  if (!cursor_ || isStale()) {
    cancel();
    return;
  }
  try {
    const bool more = bring(sliceMs, anyNumber);
    if (!cursor_) return;
    Q_EMIT progress(count_);
    if (more || !cursor_) return;
    end();
    Q_EMIT finished();
  } catch (const EDatabaseError& error) {
    end();
    Q_EMIT failed(error.text);
  } catch (const std::exception& error) {
    end();
    Q_EMIT failed(QString::fromUtf8(error.what()));
  }
}

void ProgressiveLoad::waitForAll() {
  if (!cursor_ || isStale()) return;
  timer_->stop();
  bool more = true;
  try {
    while (more && cursor_) {
      more = bring(waitSliceMs, anyNumber);
      if (!more || !waitHook_ || waitHook_(count_)) continue;
      if (cursor_) timer_->start();
      throw EAbort();  // whoever waited must not go on with a part of the rows
    }
  } catch (const EDatabaseError& error) {
    end();
    Q_EMIT failed(error.text);
    throw;
  }
  if (!cursor_) return;
  end();
  Q_EMIT progress(count_);
  Q_EMIT finished();
}

void ProgressiveLoad::cancel() {
  if (!cursor_) return;
  end();
}

void ProgressiveLoad::end() {
  timer_->stop();
  cursor_.reset();
  if (!isStale()) rows_->endLoad();
}

}  // namespace goodsbook
