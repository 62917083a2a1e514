#include "StatusBar/StatusController.h"

#include "MeetingTexts/MeetingTexts.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"
#include "StatusBar/StatusText.h"

#include <QCoreApplication>

namespace mivora {

namespace {

const QString name = QStringLiteral("Mivora");

} // namespace

StatusController::StatusController(const Scheduler &scheduler, const Preferences &prefs,
                                   kelo::ViewLoader &views, const QDBusConnection &bus,
                                   std::function<void(kelo::Menu &)> buildMenu)
    : m_scheduler(scheduler), m_prefs(prefs),
      m_item(QStringLiteral("calendar.badge.clock"), name, std::move(buildMenu),
             QStringLiteral("app.kelo.Mivora"), views, bus)
{
}

void StatusController::update(Timestamp now, CalendarAuthorization authorization, bool isNothingToRead,
                              bool isDiscreet)
{
    const auto &next = m_scheduler.next();
    const StatusText text = statusText(next, {m_prefs.showTitle(), m_prefs.titleWidth(), isDiscreet},
                                       authorization, now, isNothingToRead);
    m_item.setState({.title = text.title,
                     .countdown = text.title.isEmpty() ? QString() : shortCountdownText(next->start - now),
                     .isUrgent = text.urgent,
                     .icon = text.icon,
                     .accessibilityDescription = name,
                     .toolTip = text.toolTip.value_or(QString())});
}

QString StatusController::trayHint() const
{
    if (m_item.isShown())
        return {};
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    return desktops.contains(QLatin1String("GNOME"), Qt::CaseInsensitive)
               ? QCoreApplication::translate(
                     "StatusItem",
                     "GNOME shows no icon before you install the extension AppIndicator "
                     "(gnome-shell-extension-appindicator) and turn it on in the app Extensions; until "
                     "then, “mivora show” shows your day.")
               : QCoreApplication::translate(
                     "StatusItem", "This desktop has no tray for the icon: add one to a panel; until "
                                   "then, “mivora show” shows your day.");
}

} // namespace mivora
