#pragma once

#include "host/data/errors.h"

namespace goodsbook {

constexpr int connectionLostNumber = 10054;
// The server was told to stop a batch: it took too long, or somebody cancelled it.
constexpr int timedOutNumber = -2;
constexpr int cancelledNumber = 3617;

// The connection went away under a call. What the server has not committed is gone.
class EConnectionLost : public EDatabaseError {
 public:
  explicit EConnectionLost(const QString& told) : EDatabaseError(connectionLostNumber, 20, 1, 1, told) {}
};

// It went away under a commit: whether that happened is not known.
class ECommitUnknown : public EConnectionLost {
 public:
  using EConnectionLost::EConnectionLost;
};

}  // namespace goodsbook
