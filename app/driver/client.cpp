#include "app/driver/client.h"

#include <QJsonDocument>
#include <future>
#include <memory>
#include <stdexcept>

#include "app/driver/driver.h"

namespace goodsbook {

QJsonObject DriverClient::send(const QJsonObject& command) {
  auto answered = std::make_shared<std::promise<QJsonObject>>();
  std::future<QJsonObject> reply = answered->get_future();
  Driver& driver = driver_;
  QMetaObject::invokeMethod(
      &driver,
      [&driver, command, answered] {
        driver.submit(command, [answered](const QJsonObject& told) { answered->set_value(told); });
      },
      Qt::QueuedConnection);
  if (reply.wait_for(patience_) != std::future_status::ready) {
    throw std::runtime_error("no reply to " +
                             QJsonDocument(command).toJson(QJsonDocument::Compact).toStdString());
  }
  return reply.get();
}

void DriverClient::closeAll() {
  auto closed = std::make_shared<std::promise<void>>();
  std::future<void> done = closed->get_future();
  Driver& driver = driver_;
  QMetaObject::invokeMethod(
      &driver, [&driver, closed] { driver.closeAll([closed] { closed->set_value(); }); },
      Qt::QueuedConnection);
  if (done.wait_for(patience_) != std::future_status::ready)
    throw std::runtime_error("the windows do not close");
}

}  // namespace goodsbook
