#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "host/session.h"

namespace goodsbook {

// Answers as a queue, messages as a list. A question that found no answer and an answer that nobody asked for
// make the test fail.
class QueuedDesktop : public Desktop {
 public:
  ~QueuedDesktop() override { EXPECT_TRUE(answers.empty()) << "an answer that nobody asked for"; }

  char message(QWidget*, const QString& text, int kind, const QString&) override {
    texts.push_back(text.toStdString());
    if (whileShown) whileShown();
    if (kind != 2) return 'y';
    if (answers.empty()) {
      ADD_FAILURE() << "an unexpected question: " << text.toStdString();
      return 'n';
    }
    const char answer = answers.front();
    answers.pop_front();
    return answer;
  }
  QString openFile(QWidget*, const QString&, const QString&) override { return {}; }
  QString saveFile(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
  void openUrl(const QString&) override {}
  QString takePrintTarget() override { return {}; }
  QDateTime now() override { return QDateTime(QDate(2026, 11, 20), QTime(10, 11, 12)); }

  std::vector<std::string> texts;
  std::deque<char> answers;
  std::function<void()> whileShown;  // stands for a box that takes the focus
};

// What tests of windows do.
class FormWorldSteps {
 public:
  // A window counts as active for QTest when the one that owns it is.
  static void activate(QWidget& window) {
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
  }

  static void show(QWidget& window) {
    window.show();
    activate(window);
  }

  // Runs `script` once the modal dialog that `opens` brings up is there.
  static void whileModal(const std::function<void()>& opens, const std::function<void()>& script) {
    QTimer::singleShot(0, qApp, [&script] {
      QWidget* modal = QApplication::activeModalWidget();
      ASSERT_TRUE(modal);
      activate(*modal);
      script();
      if (modal->isVisible()) {
        ADD_FAILURE() << "the dialog is still open";
        static_cast<QDialog*>(modal)->done(0);
      }
    });
    opens();
  }
};

// A session over nothing but a desktop and a folder: for screens that are given their rows.
class FormWorld : public testing::Test, protected FormWorldSteps {
 protected:
  FormWorld() {
    auto desktop = std::make_unique<QueuedDesktop>();
    desktop_ = desktop.get();
    session_ = std::make_unique<Session>(nullptr, std::move(desktop), folder_.path());
  }

  QueuedDesktop& desktop() { return *desktop_; }
  std::vector<std::string> messages() { return std::exchange(desktop_->texts, {}); }

 private:
  QTemporaryDir folder_;
  QueuedDesktop* desktop_;
  std::unique_ptr<Session> session_;
};

}  // namespace goodsbook
