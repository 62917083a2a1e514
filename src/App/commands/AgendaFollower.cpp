#include "App/commands/AgendaFollower.h"

#include "App/AgendaJson.h"
#include "App/NextChange.h"
#include "Remote/AgendaChange.h"

#include <algorithm>
#include <cmath>

namespace mivora {

namespace {

/// Timers stand still while the machine sleeps and know nothing of a clock that is set: look again at least
/// this often.
constexpr double longestWaitSeconds = 30;
constexpr std::chrono::seconds askAgainAfter{1};

} // namespace

AgendaFollower::AgendaFollower(SessionOptions options, RunningProgram running, Printer printer)
    : m_options(std::move(options)), m_printer(std::move(printer)), m_running(running)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &AgendaFollower::refreshSession);
}

void AgendaFollower::start()
{
    if (m_running == RunningProgram::ignored) {
        followSession();
        return;
    }
    m_instance.follow();
    connect(&m_instance, &RunningInstance::came, this, &AgendaFollower::followInstance);
    connect(&m_instance, &RunningInstance::went, this, &AgendaFollower::followSession);
    connect(&m_instance, &RunningInstance::agendaChanged, this, &AgendaFollower::show);
    if (m_instance.isThere())
        followInstance();
    else
        followSession();
}

void AgendaFollower::followInstance()
{
    m_timer.stop();
    m_session.reset();
    if (const auto agenda = m_instance.agenda())
        return show(*agenda);
    // A program that is just starting has its name before it can answer, and tells only those who have asked.
    QTimer::singleShot(askAgainAfter, this, [this] {
        if (m_instance.isThere())
            followInstance();
    });
}

void AgendaFollower::followSession()
{
    m_session = std::make_unique<CalendarSession>(m_options);
    m_session->load();
    m_session->source().setOnChange([this] { refreshSession(); });
    for (const auto signal :
         {&Preferences::showTitleChanged, &Preferences::titleWidthChanged, &Preferences::leadMinutesChanged,
          &Preferences::remindWithoutLinkChanged, &Preferences::disabledCalendarIDsChanged,
          &Preferences::browserServicesChanged, &Preferences::joinHotKeyChanged})
        connect(&m_session->prefs(), signal, this, &AgendaFollower::refreshSession);
    refreshSession();
}

void AgendaFollower::refreshSession()
{
    m_session->scheduler().refresh();
    show(m_session->agenda());
    const Timestamp now = m_session->clock().now();
    const Timestamp next =
        nextChangeAfter(now, m_session->scheduler(), m_session->prefs(), m_session->zone());
    const double seconds = std::min((next - now).count(), longestWaitSeconds);
    m_timer.start(std::max(1, int(std::ceil(seconds * 1000))));
}

void AgendaFollower::show(const QJsonObject &agenda)
{
    if (!m_shown.isEmpty() && !showsChange(m_shown, agenda))
        return;
    m_shown = agenda;
    m_printer(agenda);
}

} // namespace mivora
