#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

namespace goodsbook {

struct DriveOptions {
  QString database, programDir;
  QString user = QStringLiteral("ADMIN");
  QString password;
  std::vector<std::pair<QString, QString>> globals;  // as given, not yet set
  QDateTime start;                                   // of the clock; invalid: now
};

// StartError for arguments that are unknown, missing or unreadable.
DriveOptions readDriveOptions(const QStringList& arguments);

}  // namespace goodsbook
