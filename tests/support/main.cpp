// The entry point of every test program: a program with a screen that nobody sees.
#include "platform/qt/application.h"

#include <QByteArray>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", QByteArray("offscreen"));
    testing::InitGoogleTest(&argc, argv);
    vantrel::SetUpApplication();
    vantrel::ExitNow(RUN_ALL_TESTS());  // windows that a test left behind need not be taken down
}
