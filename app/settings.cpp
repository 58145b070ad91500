#include "app/settings.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace goodsbook {

std::unique_ptr<QSettings> programSettings(const QString& programDir) {
  return std::make_unique<QSettings>(QDir(programDir).filePath(u"program.ini"_s), QSettings::IniFormat);
}

}  // namespace goodsbook
