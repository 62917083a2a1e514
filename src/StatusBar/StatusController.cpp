#include "StatusBar/StatusController.h"

#include "MeetingTexts/MeetingTexts.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"
#include "StatusBar/StatusText.h"

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

void StatusController::update(Timestamp now, CalendarAuthorization authorization)
{
    const auto &next = m_scheduler.next();
    const StatusText text = statusText(next, {m_prefs.showTitle(), m_prefs.titleWidth()}, authorization, now);
    m_item.setState({.title = text.title,
                     .countdown = text.title.isEmpty() ? QString() : shortCountdownText(next->start - now),
                     .isUrgent = text.urgent,
                     .icon = text.icon,
                     .accessibilityDescription = name,
                     .toolTip = text.toolTip.value_or(QString())});
}

} // namespace mivora
