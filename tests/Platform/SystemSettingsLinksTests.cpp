#include "Platform/linux/SystemSettingsLinks.h"

#include <gtest/gtest.h>

using namespace mivora;

TEST(SystemSettingsLinks, leadToTheRunningDesktopsPanel)
{
    const char privacy[] = "x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars";
    const char accounts[] = "x-apple.systempreferences:com.apple.Internet-Accounts-Settings.extension";

    struct Row
    {
        const char *link;
        const char *desktops;
        const char *command;
    };

    const Row rows[] = {
        {privacy, "GNOME", "gnome-control-center applications"},
        {accounts, "GNOME", "gnome-control-center online-accounts"},
        {accounts, "ubuntu:GNOME", "gnome-control-center online-accounts"},
        {accounts, "KDE", "systemsettings kcm_kaccounts"},
        {accounts, "xfce", "xfce4-settings-manager"},
        {accounts, "sway", nullptr},
        {accounts, "", nullptr},
        {accounts, "GNOMEX:XGNOME", nullptr},
        {"x-apple.systempreferences:com.apple.preference.security?Privacy_Camera", "GNOME", nullptr},
        {"x-apple.systempreferences:", "KDE", nullptr},
    };
    for (const Row &row : rows) {
        const auto command =
            systemSettingsCommand(QString::fromLatin1(row.link), QString::fromLatin1(row.desktops));
        ASSERT_EQ(command.has_value(), row.command != nullptr) << row.link << " on " << row.desktops;
        EXPECT_EQ(command.value_or(QStringList()).join(QLatin1Char(' ')), QString::fromLatin1(row.command));
    }
}
