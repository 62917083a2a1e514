#include "Translations/InstallTranslations.h"
#include "support/ServerProcess.h"

#include <QGuiApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

// Runs the tests with a QGuiApplication on an X display of their own, the first that is free, and out of
// reach of the session's bus.
int main(int argc, char **argv)
{
    QStandardPaths::setTestModeEnabled(true);
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("WAYLAND_DISPLAY");
    testing::InitGoogleTest(&argc, argv);
    const QString arguments = QStringLiteral("-displayfd 1 -screen 0 1280x800x24 -nolisten tcp -noreset");
    const support::ServerProcess display(QStringLiteral("Xvfb"), arguments.split(QLatin1Char(' ')));
    qputenv("DISPLAY", ':' + display.address());
    QGuiApplication application(argc, argv);
    // English, with its plural forms.
    mivora::installTranslations();
    return RUN_ALL_TESTS();
}
