#include "Calendar/CalendarWays.h"

namespace mivora {

namespace {

/// What stands for subscribing among the links.
constexpr const char *address = "";

} // namespace

QVariantList CalendarWays::all() const
{
    QVariantList rows;
    const auto add = [&rows](const char *link, const QString &title, const QString &text,
                             const QString &button) {
        rows.append(QVariantMap{{QStringLiteral("link"), QLatin1String(link)},
                                {QStringLiteral("title"), title},
                                {QStringLiteral("text"), text},
                                {QStringLiteral("button"), button}});
    };
    if (hasAccounts())
        add(internetAccountsLink, tr("Online accounts"),
            tr("The calendars of Google, Microsoft 365, Nextcloud and others appear here."),
            tr("Open Online Accounts…"));
    if (has(calendarProgramLink))
        add(calendarProgramLink, tr("Evolution"),
            tr("It also knows Exchange, CalDAV, and calendars on this computer."), tr("Open Evolution…"));
    if (canSubscribe())
        add(address, tr("The calendar's address"),
            tr("Nearly every calendar service has a private address for each calendar."),
            tr("Subscribe to a calendar…"));
    add(address, tr("A folder of files"),
        tr("iCalendar files (.ics) in ~/.calendars are read at once, also those that another program keeps "
           "in step with a server."),
        {});
    return rows;
}

void CalendarWays::follow(int index) const
{
    const QString link = all().at(index).toMap().value(QStringLiteral("link")).toString();
    if (link == QLatin1String(address))
        subscribe();
    else
        m_actions.open(link);
}

bool CalendarWays::has(const char *link) const
{
    return !m_actions.leadsSomewhere || m_actions.leadsSomewhere(QLatin1String(link));
}

} // namespace mivora
