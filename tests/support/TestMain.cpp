// Every test program runs inside one QApplication on the offscreen platform,
// so that forms can be shown, painted and driven without a display.
#include "testing/TestHost.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // A test may start its own program again on a real display (xcb under
    // Xvfb); that child keeps the platform it is given.
    if (!qEnvironmentVariableIsSet("FORMWERK_TEST_KEEP_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    fw::testing::TestHost::ForbiddenCallHandler = [](const std::string& call) {
        ADD_FAILURE() << "the host was called where it must not be: " << call;
    };
    return RUN_ALL_TESTS();
}
