#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <thread>

// Screens live on the user-interface thread, which runs its event loop here; the tests run beside it in a
// thread of their own, so that a dialog that waits for its user never waits for the test.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // Every test has a database file of its own: in memory, or the disk sets the pace.
  if (qEnvironmentVariableIsEmpty("TMPDIR") && QFileInfo(QStringLiteral("/dev/shm")).isWritable()) {
    qputenv("TMPDIR", "/dev/shm");
  }
  ::testing::InitGoogleTest(&argc, argv);
  QStandardPaths::setTestModeEnabled(true);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  int failures = 0;
  std::thread tests([&] {
    failures = RUN_ALL_TESTS();
    QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
  });
  QApplication::exec();
  tests.join();
  return failures;
}
