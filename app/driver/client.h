#pragma once

#include <QJsonObject>
#include <chrono>

namespace goodsbook {

class Driver;

// Sends commands to a driver from a thread that is not the user interface's and waits for the replies.
class DriverClient {
 public:
  explicit DriverClient(Driver& driver, std::chrono::seconds patience = std::chrono::seconds(60))
      : driver_(driver), patience_(patience) {}

  // Throws std::runtime_error when no reply comes in time.
  QJsonObject send(const QJsonObject& command);
  void closeAll();

 private:
  Driver& driver_;
  std::chrono::seconds patience_;
};

}  // namespace goodsbook
