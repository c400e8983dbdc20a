// Runs the end-to-end tests; started by one of them, runs as the driven program instead.
// Windows are drawn in memory unless a display is asked for.
#include <gtest/gtest.h>

#include <QApplication>
#include <fstream>

#include "driven_program.h"

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc >= 4 && std::string(argv[1]) == "--demo") {
        std::ofstream(std::string(argv[3]) + "/" + kestrel::testing::DemoMark) << argv[2];
        return 0;
    }
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    if (argc == 5 && std::string(argv[1]) == kestrel::testing::DrivenArgument)
        kestrel::testing::runDriven(application, argv[2], argv[3], argv[4]);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
