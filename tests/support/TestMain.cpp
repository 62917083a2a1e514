#include "Translations/InstallTranslations.h"
#include "support/PrivateDisplay.h"

#include <QStandardPaths>
#include <gtest/gtest.h>

#ifdef MIVORA_GUI_TEST
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

// With MIVORA_X11_TEST, tests run on an X display of their own, the first that is free, and out of reach of
// the session's bus.
int main(int argc, char **argv)
{
    // Tests never see the settings or the language of the person who runs them.
    QStandardPaths::setTestModeEnabled(true);
    qputenv("LC_ALL", "C.UTF-8");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
#ifdef MIVORA_X11_TEST
    const support::PrivateDisplay display;
    display.enter();
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    qputenv("QT_QPA_PLATFORM", "xcb");
    qunsetenv("WAYLAND_DISPLAY");
#endif
    Application application(argc, argv);
    // English, with its plural forms.
    mivora::installTranslations();
    return RUN_ALL_TESTS();
}
