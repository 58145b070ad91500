#include "host/data/progressive_load.h"

#include <QElapsedTimer>
#include <QTimer>
#include <chrono>
#include <limits>
#include <utility>

#include "host/data/database.h"
#include "host/data/errors.h"
#include "host/waiting.h"

namespace goodsbook {
namespace {

constexpr int firstRows = 200;
constexpr int sliceMs = 8;
constexpr int waitSliceMs = 50;  // between two calls of the hook while somebody waits
constexpr int rowsBetweenLooks = 64;
constexpr std::chrono::milliseconds patience{sliceMs};  // for rows that are on their way
constexpr std::chrono::milliseconds noTime{0};
constexpr std::chrono::milliseconds betweenLooks{5};  // while there are none
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
  const QPointer<ProgressiveLoad> self = this;
  const quint64 mine = ++opening_;
  const auto isWanted = [&self, mine] { return self && self->opening_ == mine; };
  std::unique_ptr<engine::Cursor> cursor;
  try {
    const Waiting waiting;
    cursor = database.openCursorBeside(
        select, [&] { return isWanted() && (!self->idleHook_ || self->idleHook_()) && isWanted(); });
  } catch (...) {
    if (self) Q_EMIT answered();
    throw;
  }
  if (!isWanted()) throw EAbort();
  Q_EMIT answered();
  start(std::move(cursor));
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
    turnOn();
    return;
  }
  end();
  Q_EMIT finished();
}

// The next slice: at once where rows are there, else the event loop would turn for nothing.
void ProgressiveLoad::turnOn() {
  timer_->start(cursor_->ready(noTime) ? noTime : betweenLooks);
}

bool ProgressiveLoad::isStale() const {
  return !rows_ || rows_->loadEpoch() != epoch_;
}

bool ProgressiveLoad::bring(int milliseconds, int atMost) {
  QElapsedTimer clock;
  clock.start();
  bool more = true;
  for (int i = 0; i < atMost && cursor_->ready(patience) && (more = cursor_->next()); ++i) {
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
    if (!cursor_) return;
    if (more) {
      turnOn();
      return;
    }
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
      bool goesOn = true;
      if (cursor_->ready(betweenLooks)) {
        more = bring(waitSliceMs, anyNumber);
        goesOn = !more || !waitHook_ || waitHook_(count_);
      } else {
        goesOn = idle();
      }
      if (goesOn) continue;
      if (cursor_) turnOn();
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

bool ProgressiveLoad::idle() {
  if (!idleHook_) return true;
  const QPointer<ProgressiveLoad> self = this;
  const Waiting waiting;
  const bool goesOn = idleHook_();
  if (!self) throw EAbort();
  if (cursor_ && isStale()) end();
  return goesOn;
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
