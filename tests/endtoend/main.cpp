// Runs the end-to-end tests; started by one of them, runs as the driven program instead.
// Windows are drawn in memory unless a display is asked for.
#include <gtest/gtest.h>

#include <QApplication>

#include "driven_program.h"

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    if (argc == 5 && std::string(argv[1]) == kestrel::testing::DrivenArgument)
        kestrel::testing::runDriven(application, argv[2], argv[3], argv[4]);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
