#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>
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

// Reads the arguments behind the sub-command's name. The exit status to end with when help was asked for or
// they are not understood (which is printed); StartError for values that cannot be used.
std::optional<int> readDriveOptions(const QStringList& arguments, DriveOptions& options);

}  // namespace goodsbook
