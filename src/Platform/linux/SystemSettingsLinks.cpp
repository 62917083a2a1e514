#include "Platform/linux/SystemSettingsLinks.h"

#include "Platform/SystemLinks.h"

#include <QProcess>
#include <array>

namespace mivora {

namespace {

constexpr QLatin1String calendarPrivacy(calendarPrivacyLink);
constexpr QLatin1String internetAccounts(internetAccountsLink);

struct Panel
{
    QLatin1String desktop;
    QLatin1String link;
    QLatin1String command;
};

/// Arguments are separated by blanks. A desktop without a panel for a link shows its settings as a whole.
constexpr std::array panels{
    Panel{QLatin1String("GNOME"), calendarPrivacy, QLatin1String("gnome-control-center applications")},
    Panel{QLatin1String("GNOME"), internetAccounts, QLatin1String("gnome-control-center online-accounts")},
    Panel{QLatin1String("KDE"), calendarPrivacy, QLatin1String("systemsettings")},
    Panel{QLatin1String("KDE"), internetAccounts, QLatin1String("systemsettings kcm_kaccounts")},
    Panel{QLatin1String("XFCE"), calendarPrivacy, QLatin1String("xfce4-settings-manager")},
    Panel{QLatin1String("XFCE"), internetAccounts, QLatin1String("xfce4-settings-manager")},
};

std::optional<QStringList> commandOn(const QString &desktop, const QString &link)
{
    for (const Panel &panel : panels) {
        if (panel.link == link && desktop.compare(panel.desktop, Qt::CaseInsensitive) == 0)
            return QString(panel.command).split(QLatin1Char(' '));
    }
    return std::nullopt;
}

} // namespace

std::optional<QStringList> systemSettingsCommand(const QString &link, const QString &desktops)
{
    for (const QString &desktop : desktops.split(QLatin1Char(':'))) {
        if (auto command = commandOn(desktop, link))
            return command;
    }
    return std::nullopt;
}

bool openSystemSettings(const QString &link)
{
    auto command = systemSettingsCommand(link, qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
    if (!command)
        return false;
    const QString program = command->takeFirst();
    return QProcess::startDetached(program, *command);
}

} // namespace mivora
