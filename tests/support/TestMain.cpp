#include "Translations/InstallTranslations.h"

#include <QStandardPaths>
#include <gtest/gtest.h>

#ifdef MIVORA_GUI_TEST
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

int main(int argc, char **argv)
{
    // Tests never see the settings or the language of the person who runs them.
    QStandardPaths::setTestModeEnabled(true);
    qputenv("LC_ALL", "C.UTF-8");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    Application application(argc, argv);
    // English, with its plural forms.
    mivora::installTranslations();
    return RUN_ALL_TESTS();
}
