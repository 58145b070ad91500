#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>

#include "host/data/odbc/loose_work.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // The server's cluster in memory, or the disk sets the pace.
  if (qEnvironmentVariableIsEmpty("TMPDIR") && QFileInfo(QStringLiteral("/dev/shm")).isWritable()) {
    qputenv("TMPDIR", "/dev/shm");
  }
  ::testing::InitGoogleTest(&argc, argv);
  QStandardPaths::setTestModeEnabled(true);
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  const int status = RUN_ALL_TESTS();
  goodsbook::looseWorkEnds(std::chrono::seconds(10));  // before the drivers are unloaded under it
  return status;
}
