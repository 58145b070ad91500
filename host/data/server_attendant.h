#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace goodsbook {

// Stays with somebody who waits for a server, from the beginning of one wait to its end.
class ServerAttendant {
 public:
  virtual ~ServerAttendant() = default;
  // Called every few milliseconds by the thread that waits; it may let events through. False gives the wait
  // up, where that is possible.
  virtual bool goesOn() = 0;
};

// Makes the attendant of one wait, `text` telling what for; null where nobody sits before a window.
using AttendantMaker = std::function<std::unique_ptr<ServerAttendant>(const QString& text, bool mayGiveUp)>;

}  // namespace goodsbook
