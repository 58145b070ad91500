#pragma once

#include "host/desktop.h"

namespace goodsbook {

// The desktop of a person at the screen: boxes, file choosers, the system's browser and clock.
class RealDesktop : public Desktop {
 public:
  char message(QWidget* parent, const QString& text, int kind, const QString& caption) override;
  QString openFile(QWidget* parent, const QString& title, const QString& filter) override;
  QString saveFile(QWidget* parent, const QString& title, const QString& suggested,
                   const QString& filter) override;
  void openUrl(const QString& url) override;
  QString takePrintTarget() override { return {}; }
  QDateTime now() override { return QDateTime::currentDateTime(); }

 private:
  QString folder_;  // where the last file was chosen
};

}  // namespace goodsbook
