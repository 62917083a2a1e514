#include "StatusBar/StatusController.h"

#include "Meetings/Countdown.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"
#include "StatusBar/StatusText.h"

namespace mivora {

namespace {

/// Hours stand for themselves where there is room for three characters.
QString shortCountdown(Timestamp start, Timestamp now)
{
    const QString text = QString::fromStdString(countdownText(start - now));
    return text.section(QLatin1Char(' '), 0, 0);
}

} // namespace

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
    m_item.setCountdown(hasTitle ? shortCountdown(next->start, now) : QString());
    m_item.setUrgent(state.urgent);
    m_item.setIcon(state.icon, QStringLiteral("Mivora"));
    m_item.setToolTip(state.toolTip.value_or(QString()));
}

} // namespace mivora
