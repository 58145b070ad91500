#pragma once

#include <QElapsedTimer>
#include <QStringList>
#include <deque>
#include <vector>

#include "host/desktop.h"

namespace goodsbook {

// A desktop without a person: boxes are recorded and answered from queues, nothing ever waits.
class DriveDesktop : public Desktop {
 public:
  struct Message {
    QString text;
    int kind = 0;
    QString caption;
    QString answer;  // "y" or "n" to a question, else empty
  };

  // The clock starts at `start` now and runs on; an invalid one is the system's clock.
  explicit DriveDesktop(const QDateTime& start = {});

  void queueAnswer(char answer) { answers_.push_back(answer); }
  void queueFile(const QString& path) { files_.push_back(path); }
  void setPrintTarget(const QString& path) { printTarget_ = path; }
  void setClock(const QDateTime& start);

  std::vector<Message> takeMessages();
  QStringList takeUrls();

  // What was queued and nobody asked for, and how many questions found the queue empty; both start again.
  QStringList takeUnused();
  int takeUnexpectedQuestions();

  char message(QWidget* parent, const QString& text, int kind, const QString& caption) override;
  QString openFile(QWidget* parent, const QString& title, const QString& filter) override;
  QString saveFile(QWidget* parent, const QString& title, const QString& suggested,
                   const QString& filter) override;
  void openUrl(const QString& url) override;
  QString takePrintTarget() override;
  QDateTime now() override;

 private:
  QString takeFile();

  std::deque<char> answers_;
  std::deque<QString> files_;
  QString printTarget_;
  std::vector<Message> messages_;
  QStringList urls_;
  int unexpectedQuestions_ = 0;
  QDateTime start_;
  QElapsedTimer sinceStart_;
};

}  // namespace goodsbook
