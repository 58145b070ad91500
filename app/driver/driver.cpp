#include "app/driver/driver.h"

#include <QApplication>
#include <QDialog>
#include <QProgressDialog>
#include <QThread>
#include <utility>

#include "app/driver/input.h"
#include "app/driver/opening_order.h"
#include "app/driver/table.h"
#include "host/data/errors.h"
#include "host/data/record_set.h"
#include "host/waiting.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// Posted events, then timers, then events that those posted: after this many turns without a change nothing
// is left to do.
constexpr int turnsUntilIdle = 3;

// What went wrong in `work`; empty when nothing did. A silent abort has been told to the user already.
template <class Work>
QString failureOf(const Work& work, QJsonObject& details) {
  try {
    work();
  } catch (const CommandError& error) {
    details = error.details();
    return error.text();
  } catch (const EAbort&) {
    return {};
  } catch (const EDatabaseError& error) {
    return error.text;
  } catch (const std::exception& error) {
    return QString::fromUtf8(error.what());
  }
  return {};
}

}  // namespace

Driver::Driver(DriveDesktop& desktop, MasterData& masterData, QWidget* owner)
    : desktop_(desktop), masterData_(masterData), owner_(owner) {
  OpeningOrder::watch();
  turn_.setInterval(0);
  connect(&turn_, &QTimer::timeout, this, &Driver::look);
}

Driver::~Driver() = default;

void Driver::submit(const QJsonObject& command, Reply reply) {
  if (leaving_) return;
  auto job = std::make_shared<Job>();
  job->command = command;
  job->reply = std::move(reply);
  queue_.push_back(std::move(job));
  if (!current_) startNext();
}

void Driver::refuse(const QString& error, Reply reply) {
  if (leaving_) return;
  auto job = std::make_shared<Job>();
  job->error = error;
  job->reply = std::move(reply);
  queue_.push_back(std::move(job));
  if (!current_) startNext();
}

void Driver::finish() {
  finishing_ = true;
  if (!current_) startNext();
}

void Driver::leave() {
  if (leaving_) return;
  leaving_ = true;
  queue_.clear();
  closeAll([this] {
    if (onQuit) onQuit();
  });
}

void Driver::closeAll(std::function<void()> done) {
  closeAll({}, std::move(done));
}

void Driver::closeAll(const QPointer<QWidget>& refused, std::function<void()> done) {
  const QPointer<QWidget> window = addressing_.foremost();
  if (!window) {
    done();
    return;
  }
  auto job = std::make_shared<Job>();
  job->step.actions.push_back([window, again = window == refused] {
    if (!window) return;
    auto* dialog = qobject_cast<QDialog*>(window);
    if (!again) {
      window->close();
    } else if (dialog && dialog->isModal()) {
      dialog->done(QDialog::Rejected);
    } else {
      delete window.data();
    }
  });
  job->reply = [this, window, done = std::move(done)](const QJsonObject&) { closeAll(window, done); };
  queue_.push_back(std::move(job));
  if (!current_) startNext();
}

void Driver::keep(const QString& name, std::unique_ptr<RecordSet> rows) {
  delete kept_.take(name);
  rows->setParent(this);
  rows->setObjectName(name);
  kept_.insert(name, rows.release());
}

RecordSet* Driver::kept(const QString& name) const {
  return kept_.value(name, nullptr);
}

void Driver::startNext() {
  if (queue_.empty()) {
    if (finishing_) leave();
    return;
  }
  current_ = queue_.front();
  queue_.pop_front();
  QMetaObject::invokeMethod(
      this, [this, job = current_] { begin(job); }, Qt::QueuedConnection);
}

void Driver::begin(const std::shared_ptr<Job>& job) {
  const bool isCommand = job->step.actions.empty() && job->error.isEmpty();
  if (isCommand) {
    job->error = failureOf(
        [&] {
          const QString name = Arguments(job->command).text("cmd");
          const Handler handler = findHandler(name);
          if (!handler) throw CommandError(DriverTexts::tr("没有命令 %1").arg(name));
          job->step = handler(*this, Arguments(job->command));
        },
        job->errorDetails);
  }
  if (!job->error.isEmpty()) {
    answer(job);
    return;
  }
  quietTurns_ = 0;
  last_ = {};
  turn_.start();
  runNextAction(job);
}

// Runs from a posted event: a timer that waits inside its own handler would not turn in a dialog's event
// loop.
void Driver::runNextAction(const std::shared_ptr<Job>& job) {
  if (job->nextAction == job->step.actions.size()) return;
  actionLevels_.push_back(QThread::currentThread()->loopLevel());
  job->inAction = true;
  QJsonObject details;
  const QString error = failureOf(job->step.actions[job->nextAction++], details);
  job->inAction = false;
  actionLevels_.pop_back();
  if (job->answered || error.isEmpty()) return;
  job->error = error;
  job->errorDetails = details;
}

void Driver::look() {
  if (!current_) {
    turn_.stop();
    return;
  }
  const Situation now{QThread::currentThread()->loopLevel(), QApplication::activeModalWidget(),
                      QApplication::activePopupWidget(), actionLevels_.size()};
  if (now != last_) {
    last_ = now;
    quietTurns_ = 0;
    return;
  }
  // Inside an action only a dialog's own event loop means that the action waits for the user; an action that
  // lets events through while it works is still at work.
  // A box that tells how far work has come is shown, and asks nothing.
  const bool asks = now.popup || (now.modal && !qobject_cast<const QProgressDialog*>(now.modal));
  const bool working = (Waiting::isGoingOn() && !asks) ||
                       (!actionLevels_.empty() && (now.level <= actionLevels_.back() || !asks));
  if (working || ++quietTurns_ < turnsUntilIdle) return;
  settled();
}

void Driver::settled() {
  const std::shared_ptr<Job> job = current_;
  quietTurns_ = 0;
  last_ = {};
  const bool goesOn = !job->inAction && job->error.isEmpty();
  if (goesOn && job->nextAction < job->step.actions.size()) {
    QMetaObject::invokeMethod(
        this, [this, job] { runNextAction(job); }, Qt::QueuedConnection);
    return;
  }
  turn_.stop();
  if (const int delay = std::exchange(job->step.delayMs, 0); delay > 0 && goesOn) {
    QTimer::singleShot(delay, this, [this] { turn_.start(); });
    return;
  }
  giveBackKeyboard();
  answer(job);
}

// Where a window has gone that had the keyboard, a desktop hands it to the one behind; without one it would
// stay nowhere.
void Driver::giveBackKeyboard() {
  QWidget* front = addressing_.foremost();
  if (!QApplication::activeWindow() && front && front->isVisible()) activate(*front);
}

void Driver::answer(const std::shared_ptr<Job>& job) {
  turn_.stop();
  job->answered = true;
  QJsonObject reply;
  if (job->error.isEmpty() && job->step.answer) {
    job->error = failureOf([&] { reply = job->step.answer(); }, job->errorDetails);
  }
  if (!job->error.isEmpty()) {
    reply = job->errorDetails;
    reply.insert("error"_L1, job->error);
  }
  reply.insert("ok"_L1, job->error.isEmpty());
  current_.reset();
  const Reply told = std::exchange(job->reply, {});
  if (told) told(reply);
  if (!current_) startNext();
}

}  // namespace goodsbook
