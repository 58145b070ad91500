#pragma once

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "app/driver/addressing.h"
#include "app/driver/command.h"

class QWidget;

namespace goodsbook {

class DriveDesktop;
class MasterData;
class RecordSet;

// Drives the program's real widgets by commands, one JSON object each. It lives on the user-interface thread
// and blocks nothing: a command runs from the event loop and is answered when the program is idle again,
// which is also when an action has opened a modal dialog and waits for it. Commands are done one after
// another, in the order of submitting.
class Driver : public QObject {
  Q_OBJECT

 public:
  using Reply = std::function<void(QJsonObject)>;

  // `desktop` is the session's; screens are opened with `owner` as their owner. All must outlive the driver.
  Driver(DriveDesktop& desktop, MasterData& masterData, QWidget* owner);
  ~Driver() override;

  // Every reply has "ok"; a failure also "error".
  void submit(const QJsonObject& command, Reply reply);

  // Answers an error in its turn: for what came in place of a command.
  void refuse(const QString& error, Reply reply);

  // No more commands will come: leaves when the last one has been answered.
  void finish();

  // Closes every dialog and window as their close buttons do, so that each keeps what it keeps, then calls
  // onQuit. Commands that are still waiting are not done any more.
  void leave();

  // Closes every dialog and window, newest first, then calls `done`.
  void closeAll(std::function<void()> done);

  DriveDesktop& desktop() { return desktop_; }
  MasterData& masterData() { return masterData_; }
  Addressing& addressing() { return addressing_; }
  QWidget* owner() { return owner_; }

  // Record sets that belong to no window, found by name from every window.
  void keep(const QString& name, std::unique_ptr<RecordSet> rows);
  RecordSet* kept(const QString& name) const;

  // Called by leave(), when every window is closed.
  std::function<void()> onQuit;

 private:
  // A command on its way. An action that sits in a dialog's event loop outlives the command's answer.
  struct Job {
    QJsonObject command;
    Reply reply;
    Step step;
    std::size_t nextAction = 0;
    bool inAction = false;
    bool answered = false;
    QString error;
    QJsonObject errorDetails;
  };

  // What must stay the same over several turns of the event loop before the program counts as idle.
  struct Situation {
    int level = 0;
    const QWidget* modal = nullptr;
    const QWidget* popup = nullptr;
    std::size_t actions = 0;
    bool operator==(const Situation&) const = default;
  };

  void startNext();
  void begin(const std::shared_ptr<Job>& job);
  void runNextAction(const std::shared_ptr<Job>& job);
  void look();  // one turn of the event loop while a command is on its way
  void settled();
  void giveBackKeyboard();
  void answer(const std::shared_ptr<Job>& job);
  void closeAll(const QPointer<QWidget>& refused, std::function<void()> done);

  DriveDesktop& desktop_;
  MasterData& masterData_;
  QPointer<QWidget> owner_;
  Addressing addressing_;
  QHash<QString, RecordSet*> kept_;  // owned as children
  std::deque<std::shared_ptr<Job>> queue_;
  std::shared_ptr<Job> current_;
  std::vector<int>
      actionLevels_;  // for every action that has not returned: how deep in event loops it was started
  QTimer turn_;
  bool finishing_ = false;
  bool leaving_ = false;
  Situation last_;
  int quietTurns_ = 0;
};

}  // namespace goodsbook
