#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>

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
  return RUN_ALL_TESTS();
}
