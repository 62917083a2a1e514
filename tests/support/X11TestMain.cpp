#include "Translations/InstallTranslations.h"
#include "support/PrivateDisplay.h"

#include <QGuiApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>
#include <optional>

namespace {

class SkipAll final : public testing::Environment
{
    void SetUp() override { GTEST_SKIP() << "Xvfb is not installed"; }
};

} // namespace

// Runs the tests with a QGuiApplication on an X display of their own and out of reach of the session's bus.
int main(int argc, char **argv)
{
    QStandardPaths::setTestModeEnabled(true);
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qunsetenv("WAYLAND_DISPLAY");
    testing::InitGoogleTest(&argc, argv);
    std::optional<support::PrivateDisplay> display;
    if (support::PrivateDisplay::isInstalled()) {
        display.emplace().enter();
        qputenv("QT_QPA_PLATFORM", "xcb");
    } else {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        testing::AddGlobalTestEnvironment(new SkipAll);
    }
    QGuiApplication application(argc, argv);
    // English, with its plural forms.
    mivora::installTranslations();
    return RUN_ALL_TESTS();
}
