#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFileInfo>

int main(int argc, char** argv) {
  // The server's cluster in memory, or the disk sets the pace.
  if (qEnvironmentVariableIsEmpty("TMPDIR") && QFileInfo(QStringLiteral("/dev/shm")).isWritable()) {
    qputenv("TMPDIR", "/dev/shm");
  }
  ::testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
