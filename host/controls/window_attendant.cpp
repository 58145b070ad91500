#include "host/controls/window_attendant.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <optional>

#include "host/waiting.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int noticeableMs = 500;

// Without a button it goes only with the wait.
class WaitBox : public QProgressDialog {
 public:
  WaitBox(const QString& text, bool mayGiveUp, QWidget* parent)
      : QProgressDialog(text, mayGiveUp ? QCoreApplication::translate("Progress", "取消") : QString(), 0, 0,
                        parent),
        mayGiveUp_(mayGiveUp) {
    setObjectName(u"ServerWait"_s);
    setWindowTitle(QCoreApplication::translate("WindowAttendant", "请稍候"));
    setWindowFlag(Qt::WindowCloseButtonHint, mayGiveUp);
    setWindowModality(Qt::ApplicationModal);
    setMinimumDuration(0);
    setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    setAutoClose(false);
    setAutoReset(false);
    // The box comes up under the hands of somebody who types: Return and blanks are meant for the window.
    for (QPushButton* button : findChildren<QPushButton*>()) {
      button->setFocusPolicy(Qt::NoFocus);
      button->setAutoDefault(false);
    }
  }

 protected:
  void reject() override {
    if (mayGiveUp_) cancel();
  }
  void closeEvent(QCloseEvent* event) override {
    reject();
    event->ignore();  // it goes with the wait
  }

 private:
  bool mayGiveUp_;
};

class WindowAttendant : public ServerAttendant {
 public:
  WindowAttendant(QString text, bool mayGiveUp) : text_(std::move(text)), mayGiveUp_(mayGiveUp) {
    clock_.start();
  }
  ~WindowAttendant() override {
    if (box_) QApplication::restoreOverrideCursor();
  }
  WindowAttendant(const WindowAttendant&) = delete;
  WindowAttendant& operator=(const WindowAttendant&) = delete;

  bool goesOn() override {
    if (!box_) {
      if (clock_.elapsed() < noticeableMs) return true;
      QApplication::setOverrideCursor(Qt::WaitCursor);
      box_.emplace(text_, mayGiveUp_, QApplication::activeWindow());
      box_->show();
    }
    QApplication::processEvents();
    return !box_->wasCanceled();
  }

 private:
  const Waiting waiting_;
  QString text_;
  bool mayGiveUp_;
  QElapsedTimer clock_;
  std::optional<WaitBox> box_;
};

}  // namespace

AttendantMaker attendInWindow() {
  return [](const QString& text, bool mayGiveUp) -> std::unique_ptr<ServerAttendant> {
    const bool hasWindow = qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr &&
                           QThread::currentThread() == QCoreApplication::instance()->thread();
    return hasWindow ? std::make_unique<WindowAttendant>(text, mayGiveUp) : nullptr;
  };
}

}  // namespace goodsbook
