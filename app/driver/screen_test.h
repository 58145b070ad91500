#pragma once

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/driver/drive_desktop.h"
#include "app/driver/driver.h"

void PrintTo(const QString& text, std::ostream* out);  // in messages of failing tests

namespace goodsbook {

// Base of tests that drive real screens: a fresh session over an embedded database of its own in a temporary
// folder (or over a real server's, where GOODSBOOK_TEST_SERVER names one), user ADMIN signed in, the plug-in
// loaded, the clock at 2026-11-20 10:11:12. Tests run in a thread of their own and talk to the screens as a
// script does; what touches widgets directly goes through onGui().
//
// At the end of a test every window is closed; answers and files that nobody asked for, and questions that
// found no answer, make it fail.
class ScreenTest : public ::testing::Test {
 protected:
  ScreenTest();
  ~ScreenTest() override;
  void SetUp() override;
  void TearDown() override;

  // Objects are given out as constant: indexing them then gives values, not references into a temporary.

  // The reply as it comes; fails the test when none comes.
  const QJsonObject send(const QJsonObject& command);
  // The same for a command that has to succeed: records a failure with the reply's error otherwise.
  const QJsonObject done(const QJsonObject& command);
  // The error of a command that has to fail.
  QString refused(const QJsonObject& command);

  // Common commands in one line each; all have to succeed.
  const QJsonObject open(int module, const QJsonObject& rights = {});  // the screen; empty when none was made
  void act(const QString& action);
  QString type(const QString& element, const QString& text);  // the text afterwards
  QString focus(const QString& element);                      // the element that has the focus then
  void click(const QString& element);
  void press(const QString& keys);
  const QJsonObject get(const QString& element);
  QString text(const QString& element) { return get(element)[QLatin1String("text")].toString(); }
  QJsonArray rows(const QString& element);                      // the row objects
  std::vector<QString> messages();                              // their texts, since the last call
  std::vector<QString> statements();                            // the texts sent, since the last call
  std::vector<std::vector<QString>> sql(const QString& batch);  // the last result set; "NULL" for NULL
  void answer(const QStringList& answers);
  QString frontClass();  // of the window that commands reach

  // Runs `work` on the user-interface thread and waits for it; what it throws comes through.
  void onGui(const std::function<void()>& work);
  Driver& driver();
  DriveDesktop& desktop();
  static bool onServer();                            // where a database is no file
  QString folder() const { return folder_.path(); }  // the program's folder of this test

  // To be called in a test's constructor: the database file to start from, a copy of which is used; else an
  // empty shop.
  void startFrom(const QString& databaseFile) { template_ = databaseFile; }

 private:
  class Stage;  // what lives on the user-interface thread

  QTemporaryDir folder_;
  QString template_;
  Stage* stage_ = nullptr;
};

}  // namespace goodsbook
