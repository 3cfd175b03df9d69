// The window tests. Without a display they draw into memory.
#include <QApplication>

#include <gtest/gtest.h>

#include "shell/qt/q_stack.h"

int main(int argc, char **argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  velora::qt::provide_stack(argv);
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QCoreApplication::setApplicationName(QStringLiteral("velora-tests"));
  return RUN_ALL_TESTS();
}
