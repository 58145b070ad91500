#include "host/controls/progress.h"

#include <QCoreApplication>
#include <QPointer>

#include "host/data/errors.h"

namespace goodsbook {
namespace {

constexpr int noticeableMs = 400;
constexpr int betweenUpdatesMs = 50;

}  // namespace

Progress::Progress(QWidget* parent, const QString& text, int steps)
    : dialog_(text, QCoreApplication::translate("Progress", "取消"), 0, steps, parent) {
  dialog_.setWindowModality(Qt::ApplicationModal);
  dialog_.setMinimumDuration(noticeableMs);
  dialog_.setAutoClose(false);
  dialog_.setAutoReset(false);
  dialog_.setValue(0);
  sinceShown_.start();
}

void Progress::step(int done) {
  if (sinceShown_.elapsed() < betweenUpdatesMs) return;
  sinceShown_.restart();
  dialog_.setValue(done);  // lets events through, the cancel button's among them
  if (dialog_.wasCanceled()) throw EAbort();
}

void Progress::wait() {
  const QPointer<QProgressDialog> dialog = &dialog_;
  QCoreApplication::processEvents(dialog_.isVisible() ? QEventLoop::AllEvents
                                                      : QEventLoop::ExcludeUserInputEvents);
  if (!dialog || dialog_.wasCanceled()) throw EAbort();
}

void Progress::setText(const QString& text) {
  dialog_.setLabelText(text);
}

}  // namespace goodsbook
