#include <gtest/gtest.h>

#include <QApplication>

// Widgets, models and timers of the host need an application; tests run without a display.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  QCoreApplication::setOrganizationName(QStringLiteral("goodsbook-test"));
  QCoreApplication::setApplicationName(QStringLiteral("host_test"));
  return RUN_ALL_TESTS();
}
