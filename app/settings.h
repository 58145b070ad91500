#pragma once

#include <QSettings>
#include <QString>
#include <memory>

namespace goodsbook {

// What the program itself remembers in its folder: last databases and user, the main window's place and
// panes, colours.
std::unique_ptr<QSettings> programSettings(const QString& programDir);

}  // namespace goodsbook
