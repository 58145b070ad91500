#pragma once

#include <QDir>
#include <QJsonObject>
#include <QStringList>
#include <functional>

#include "app/driver/client.h"

class QWidget;

namespace goodsbook {

class Driver;
class MainWindow;

// Opens every screen that the main window offers, and what their actions and buttons lead to, and takes a
// picture of each. Runs beside the user-interface thread, through the driver.
class Tour {
 public:
  Tour(Driver& driver, MainWindow& window, const QDir& folder);

  // Whether the data are the tour's own, which it may add to.
  void mayChangeData(bool may) { mayChangeData_ = may; }

  void run();
  QStringList pictures() const { return pictures_; }  // what was written, in order
  QStringList problems() const { return problems_; }  // what did not work

 private:
  void visitModule(int module);
  void visitActions(const QString& screen);
  void visitAction(const QString& screen, const QString& action);
  void visitPickers(const QString& dialog);
  void closeFront();
  void visitProductDialogs();
  void visitLabels();
  void visitWarehouseRights();
  void visitQuickEditors();
  void visitImport();
  void fillFrom(const QString& element, const QString& select);
  void dialogPictures(const QString& name);  // as it opens, and as small as it goes
  void picturesOfWindow();

  QJsonObject send(const QJsonObject& command);
  QJsonObject front();  // the window in front, as `screens` tells it
  void picture(const QString& name);
  void pictureOf(QWidget& widget, const QString& name);
  void onGui(const std::function<void()>& work);
  void resize(const QSize& size);

  Driver& driver_;
  MainWindow& window_;
  QDir folder_;
  bool mayChangeData_ = false;
  DriverClient client_;
  QList<int> opened_;  // modules that have a screen
  QStringList pictures_;
  QStringList problems_;
};

}  // namespace goodsbook
