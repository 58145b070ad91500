#pragma once

#include <vector>

#include "host/data/errors.h"
#include "host/data/server_database.h"

namespace goodsbook {

struct OdbcMessage;
struct ServerTarget;

// A connection that did not come about: which of the usual reasons it is, in plain words.
class EConnectFailed : public EDatabaseError {
 public:
  EConnectFailed(ServerProblem theProblem, int errorNumber, const QString& errorText)
      : EDatabaseError(errorNumber, 20, 1, 1, errorText), problem(theProblem) {}
  const ServerProblem problem;
};

// Judges what the driver said, and knocks at the server's door where that leaves the reason open.
EConnectFailed connectError(const std::vector<OdbcMessage>& messages, const ServerTarget& target);

// For a driver that has not come back in time.
EConnectFailed silenceError(const ServerTarget& target);

}  // namespace goodsbook
