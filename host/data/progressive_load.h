#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "engine/row.h"
#include "host/data/record_set.h"
#include "host/export.h"

class QTimer;

namespace goodsbook {

class Database;

// Brings the rows of a select into a record set while the program goes on: the first rows at once, the rest
// in slices of at most 8 ms between events. Whatever asks the set for all rows gets them through
// waitForAll(). New contents in the set, by another load or otherwise, end this one silently.
class GOODSBOOKHOST_EXPORT ProgressiveLoad : public QObject {
  Q_OBJECT

 public:
  explicit ProgressiveLoad(RecordSet& rows, QObject* parent = nullptr);
  ~ProgressiveLoad() override;

  // Opens the select and shows its first rows, replacing what the set holds. A load that is under way is
  // dropped. EDatabaseError when the select cannot be opened, EAbort when the idle hook ends the waiting for
  // it; the set is as before then. The hook may let events through: this object may be gone when EAbort
  // arrives.
  void start(Database& database, const QString& select);
  void start(std::unique_ptr<engine::Cursor> cursor);

  bool isRunning() const { return cursor_ != nullptr; }
  int count() const { return count_; }  // rows so far

  // Brings all remaining rows. Throws what failed() reports, and EAbort when the hook ends the waiting; the
  // rows then go on coming by themselves.
  void waitForAll();
  // Called between slices while somebody waits, with the rows so far; false ends the waiting.
  void setWaitHook(std::function<bool(int)> hook) { waitHook_ = std::move(hook); }
  // Called every few milliseconds while somebody waits for rows that the server has not sent yet, the first
  // ones included; false ends the waiting.
  void setIdleHook(std::function<bool()> hook) { idleHook_ = std::move(hook); }

  void cancel();  // the rows that are there stay; finished() is not told

 Q_SIGNALS:
  void answered();  // the select that start() waited for, in whatever way
  void progress(int count);
  void finished();
  void failed(const QString& text);

 private:
  void slice();
  bool bring(int milliseconds, int atMost);  // false at the end of the rows
  void turnOn();
  bool idle();
  bool isStale() const;
  void end();

  QPointer<RecordSet> rows_;
  std::unique_ptr<engine::Cursor> cursor_;
  std::function<bool(int)> waitHook_;
  std::function<bool()> idleHook_;
  QTimer* timer_;
  quint64 epoch_ = 0;
  quint64 opening_ = 0;  // the newest one
  int count_ = 0;
};

}  // namespace goodsbook
