#include "Platform/linux/SystemSettingsLinks.h"

#include <gtest/gtest.h>

using namespace mivora;

TEST(SystemSettingsLinks, leadToTheRunningDesktopsPanel)
{
    const char privacy[] = "x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars";
    const char accounts[] = "x-apple.systempreferences:com.apple.Internet-Accounts-Settings.extension";

    const std::tuple<const char *, const char *, const char *> rows[] = {
        {privacy, "GNOME", "gnome-control-center applications"},
        {accounts, "ubuntu:GNOME", "gnome-control-center online-accounts"},
        {accounts, "KDE", "systemsettings kcm_kaccounts"},
        {accounts, "xfce", "xfce4-settings-manager"},
        {accounts, "", nullptr},
        {accounts, "GNOMEX:XGNOME", nullptr},
        {"x-apple.systempreferences:com.apple.preference.security?Privacy_Camera", "GNOME", nullptr},
    };
    for (const auto &[link, desktops, expected] : rows) {
        const auto command = systemSettingsCommand(QString::fromLatin1(link), QString::fromLatin1(desktops));
        EXPECT_EQ(command.has_value(), expected != nullptr) << link << " on " << desktops;
        EXPECT_EQ(command.value_or(QStringList()).join(QLatin1Char(' ')), QString::fromLatin1(expected));
    }
}
