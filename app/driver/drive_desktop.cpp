#include "app/driver/drive_desktop.h"

#include <utility>

#include "host/saved_path.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

DriveDesktop::DriveDesktop(const QDateTime& start) {
  setClock(start);
}

void DriveDesktop::setClock(const QDateTime& start) {
  start_ = start;
  sinceStart_.start();
}

std::vector<DriveDesktop::Message> DriveDesktop::takeMessages() {
  return std::exchange(messages_, {});
}

QStringList DriveDesktop::takeUrls() {
  return std::exchange(urls_, {});
}

QStringList DriveDesktop::takeUnused() {
  QStringList unused;
  for (const char answer : std::exchange(answers_, {})) unused << QString(QLatin1Char(answer));
  for (const QString& file : std::exchange(files_, {})) unused << file;
  if (!printTarget_.isEmpty()) unused << std::exchange(printTarget_, {});
  return unused;
}

int DriveDesktop::takeUnexpectedQuestions() {
  return std::exchange(unexpectedQuestions_, 0);
}

char DriveDesktop::message(QWidget*, const QString& text, int kind, const QString& caption) {
  constexpr int question = 2;
  if (kind != question) {
    messages_.push_back({text, kind, caption, {}});
    return 'y';
  }
  char answer = 'n';
  if (answers_.empty()) {
    ++unexpectedQuestions_;
  } else {
    answer = answers_.front();
    answers_.pop_front();
  }
  messages_.push_back({text, kind, caption, QString(QLatin1Char(answer))});
  return answer;
}

QString DriveDesktop::takeFile() {
  if (files_.empty()) return {};
  const QString path = files_.front();
  files_.pop_front();
  return path;
}

QString DriveDesktop::openFile(QWidget*, const QString&, const QString&) {
  return takeFile();
}

QString DriveDesktop::saveFile(QWidget*, const QString&, const QString&, const QString& filter) {
  const QString path = takeFile();
  return path.isEmpty() ? path : withSuffix(path, filter);
}

void DriveDesktop::openUrl(const QString& url) {
  urls_ << url;
}

QString DriveDesktop::takePrintTarget() {
  return std::exchange(printTarget_, {});
}

QDateTime DriveDesktop::now() {
  return start_.isValid() ? start_.addMSecs(sinceStart_.elapsed()) : QDateTime::currentDateTime();
}

}  // namespace goodsbook
