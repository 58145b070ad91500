#pragma once

#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <utility>

#include "host/U_glo.h"
#include "host/data/database.h"
#include "host/data/sql_sets.h"
#include "host/session.h"

namespace goodsbook::test {

// A desktop that writes down what it was told and answers no.
class QuietDesktop : public Desktop {
 public:
  explicit QuietDesktop(QDateTime now) : now_(std::move(now)) {}
  char message(QWidget*, const QString& text, int kind, const QString&) override {
    messages += QString::number(kind) + u' ' + text;
    return answer;
  }
  QString openFile(QWidget*, const QString&, const QString&) override { return {}; }
  QString saveFile(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
  void openUrl(const QString&) override {}
  QString takePrintTarget() override { return {}; }
  QDateTime now() override { return now_; }
  void setNow(const QDateTime& now) { now_ = now; }

  QStringList messages;
  char answer = 'n';  // to every question

 private:
  QDateTime now_;
};

// A session on an embedded database of its own, on 2026-11-20 10:11:12.
class TestSession {
 public:
  TestSession()
      : desktop_(new QuietDesktop(QDateTime(QDate(2026, 11, 20), QTime(10, 11, 12)))),
        session_(openEmbeddedDatabase(
                     folder_.filePath(QStringLiteral("shop.db")),
                     {.create = true, .busyTimeoutMs = 10'000, .clock = [this] { return desktop_->now(); }}),
                 std::unique_ptr<Desktop>(desktop_), folder_.path()) {
    G_UserId = QStringLiteral("ADMIN");
    session_.setRecording(true);
  }
  ~TestSession() { resetGlobals(); }
  TestSession(const TestSession&) = delete;
  TestSession& operator=(const TestSession&) = delete;

  QuietDesktop& desktop() { return *desktop_; }
  Session& session() { return session_; }
  Database& database() { return session_.database(); }
  QString file() const { return folder_.filePath(QStringLiteral("shop.db")); }

  SqlSets run(const QString& batch) { return runSql(database(), batch, Database::Permission::Screens); }
  // The first set: values joined by commas, rows by semicolons, NULL as "-".
  QString ask(const QString& select) {
    QStringList lines;
    const SqlSets answer = run(select);
    for (const auto& row : answer.sets.at(0).rows) {
      QStringList texts;
      for (const auto& text : row) texts += text.value_or(QStringLiteral("-"));
      lines += texts.join(u',');
    }
    return lines.join(u';');
  }

 private:
  QTemporaryDir folder_;
  QuietDesktop* desktop_;
  Session session_;
};

}  // namespace goodsbook::test
