#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  // Without a display, whoever starts the tests.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
