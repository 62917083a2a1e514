#include "StatusBar/StatusController.h"

#include "MeetingTexts/MeetingTexts.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"
#include "StatusBar/StatusText.h"

namespace mivora {

StatusController::StatusController(const Scheduler &scheduler, const Preferences &prefs,
                                   const QDBusConnection &bus, std::function<void(kelo::Menu &)> buildMenu)
    : m_scheduler(scheduler), m_prefs(prefs), m_item(QStringLiteral("app.kelo.Mivora"), bus)
{
    m_item.setIcon(QStringLiteral("calendar.badge.clock"), QStringLiteral("Mivora"));
    m_item.menuNeedsUpdate = std::move(buildMenu);
}

void StatusController::update(Timestamp now, CalendarAuthorization authorization)
{
    const auto &next = m_scheduler.next();
    const StatusText text = statusText(next, {m_prefs.showTitle(), m_prefs.titleWidth()}, authorization, now);
    m_item.setTitle(text.title);
    m_item.setCountdown(text.title.isEmpty() ? QString() : shortCountdownText(next->start - now));
    m_item.setUrgent(text.urgent);
    m_item.setIcon(text.icon, QStringLiteral("Mivora"));
    m_item.setToolTip(text.toolTip.value_or(QString()));
}

} // namespace mivora
