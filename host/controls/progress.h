#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QString>

#include "host/export.h"

namespace goodsbook {

// Progress of long work over rows, with a cancel button. It appears only when the work takes longer than a
// moment.
class GOODSBOOKHOST_EXPORT Progress {
 public:
  Progress(QWidget* parent, const QString& text, int steps);

  void step(int done);  // throws EAbort once the user has cancelled
  // For work that goes on elsewhere, to be called every few milliseconds: lets events through. Until the
  // dialog is there, what the user types and clicks waits. EAbort once the user has cancelled.
  void wait();
  void setText(const QString& text);

 private:
  QProgressDialog dialog_;
  QElapsedTimer sinceShown_;
};

}  // namespace goodsbook
