#include "StatusBar/StatusController.h"

#include "MeetingTexts/MeetingTexts.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"
#include "StatusBar/StatusText.h"

namespace mivora {

StatusController::StatusController(const Scheduler &scheduler, const Preferences &prefs,
                                   const QDBusConnection &bus, std::function<void(kelo::Menu &)> buildMenu,
                                   QObject *parent)
    : QObject(parent), m_scheduler(scheduler), m_prefs(prefs), m_item(QStringLiteral("app.kelo.Mivora"), bus)
{
    m_item.setIcon(QStringLiteral("calendar.badge.clock"), QStringLiteral("Mivora"));
    m_item.menuNeedsUpdate = std::move(buildMenu);
}

void StatusController::update(Timestamp now, CalendarAuthorization authorization)
{
    const auto &next = m_scheduler.next();
    const StatusItemState state =
        statusItemState(next, {m_prefs.showTitle(), m_prefs.titleWidth()}, authorization, now);
    const bool hasTitle = !state.title.isEmpty();
    m_item.setTitle(state.title);
    m_item.setCountdown(hasTitle ? shortCountdownText(next->start - now) : QString());
    m_item.setUrgent(state.urgent);
    m_item.setIcon(state.icon, QStringLiteral("Mivora"));
    m_item.setToolTip(state.toolTip.value_or(QString()));
}

} // namespace mivora
