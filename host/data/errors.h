#pragma once

#include <QString>
#include <exception>

#include "host/export.h"

namespace goodsbook {

// A database refused or failed. Screens let it reach the base screen, which shows the text once.
class GOODSBOOKHOST_EXPORT EDatabaseError : public std::exception {
 public:
  EDatabaseError(int number, int severity, int state, int line, QString text);
  ~EDatabaseError() override;
  const char* what() const noexcept override { return utf8_.constData(); }

  const int number;    // the server's message number
  const int severity;  // 11 and above
  const int state;
  const int line;      // 1-based line of the batch
  const QString text;  // what the user reads

 private:
  QByteArray utf8_;
};

// Nobody knows whether a save was committed: its answer is lost, and the server cannot be asked yet.
// Database::wasSaved() asks it, by the save's name.
class GOODSBOOKHOST_EXPORT ESaveUnknown : public EDatabaseError {
 public:
  ESaveUnknown(const EDatabaseError& why, QString nameOfSave);
  ~ESaveUnknown() override;

  const QString save;
};

// Ends the running action silently: what had to be said has been said.
class GOODSBOOKHOST_EXPORT EAbort : public std::exception {
 public:
  ~EAbort() override;
  const char* what() const noexcept override { return "abort"; }
};

}  // namespace goodsbook
