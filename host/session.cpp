#include "host/session.h"

#include <QDir>
#include <stdexcept>
#include <utility>

namespace goodsbook {
namespace {

Session* theSession = nullptr;

}  // namespace

Session::Session(std::unique_ptr<Database> database, std::unique_ptr<Desktop> desktop, QString programDir)
    : database_(std::move(database)), desktop_(std::move(desktop)), programDir_(std::move(programDir)) {
  if (theSession != nullptr) throw std::logic_error("a session is running already");
  theSession = this;
}

Session::~Session() {
  theSession = nullptr;
}

Session& Session::current() {
  if (theSession == nullptr) throw std::logic_error("no session is running");
  return *theSession;
}

bool Session::exists() {
  return theSession != nullptr;
}

QString Session::programFile(const QString& name) const {
  return QDir(programDir_).filePath(name);
}

void Session::record(SentStatement statement) {
  if (recording_) statements_.push_back(std::move(statement));
}

std::vector<SentStatement> Session::takeStatements() {
  return std::exchange(statements_, {});
}

}  // namespace goodsbook
