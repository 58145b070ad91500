#pragma once

#include <QString>
#include <vector>

#include "engine/error.h"
#include "host/data/errors.h"
#include "host/data/odbc/odbc_handle.h"

namespace goodsbook {

// One message that a driver holds for a handle.
struct OdbcMessage {
  QString state;  // the five characters of SQLSTATE
  int native = 0;
  int number = 0;    // the server's message number, as T-SQL counts them
  int severity = 0;  // 10 and below: no error
  int messageState = 1;
  int line = 1;
  QString text;  // without the names of driver and manager in front

  bool isError() const { return severity > 10; }
  bool tellsLostConnection() const;
  EDatabaseError toError() const;
  engine::Diagnostic toNotice() const;
};

// All messages of the last call on the handle. Drivers rank them: errors first, then what has a number, each
// kind in the order in which the server sent it.
std::vector<OdbcMessage> messagesOf(const OdbcHandle& handle);

// The one to tell: the first error, else the first message, else one that says that nothing was said.
OdbcMessage firstError(const std::vector<OdbcMessage>& messages);

}  // namespace goodsbook
