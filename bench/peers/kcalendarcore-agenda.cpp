// A program that keeps its calendars in KCalendarCore, with a list of its own of when the events are: the
// library itself looks at all events each time that it is asked.

#include "CalendarPeer.h"

#include <KCalendarCore/ICalFormat>
#include <KCalendarCore/MemoryCalendar>
#include <QCoreApplication>
#include <QTimeZone>
#include <limits>
#include <unordered_map>
#include <vector>

namespace {

using namespace KCalendarCore;

constexpr qint64 endless = std::numeric_limits<qint64>::max();

struct Listed
{
    Event::Ptr event;
    qint64 begin = 0;
    qint64 end = 0;
    qint64 length = 0;
};

class KdeCalendar final : public peers::CalendarLibrary
{
    void read(const std::string &name, char *text) override
    {
        MemoryCalendar::Ptr &calendar = m_calendars[name];
        if (calendar)
            std::erase_if(m_events, [&](const Listed &listed) {
                return calendar->event(listed.event->uid()) == listed.event;
            });
        calendar.reset(new MemoryCalendar(QTimeZone::utc()));
        const char *const rest = peers::withoutKnownZones(text);
        if (!m_format.fromRawString(calendar, QByteArray::fromRawData(rest, int(qstrlen(rest)))))
            qFatal("not a calendar");
        for (const Event::Ptr &event : calendar->rawEvents())
            m_events.push_back(listed(event));
    }

    static Listed listed(const Event::Ptr &event)
    {
        const qint64 begin = event->dtStart().toSecsSinceEpoch();
        const qint64 end = event->dtEnd().toSecsSinceEpoch();
        if (!event->recurs())
            return {event, begin, end, end - begin};
        const QDateTime last = event->recurrence()->endDateTime();
        return {event, begin, last.isValid() ? last.toSecsSinceEpoch() + (end - begin) : endless,
                end - begin};
    }

    std::vector<peers::Occurrence> occurrences(peers::Days days) override
    {
        std::vector<peers::Occurrence> found;
        for (const Listed &listed : m_events) {
            if (listed.begin >= days.to || listed.end <= days.from)
                continue;
            for (const qint64 begin : beginnings(listed, days))
                found.push_back({listed.event->summary().toStdString(), begin, begin + listed.length});
        }
        return found;
    }

    static std::vector<qint64> beginnings(const Listed &listed, peers::Days days)
    {
        if (!listed.event->recurs())
            return {listed.begin};
        std::vector<qint64> found;
        // The first and the last second count in this interface.
        for (const QDateTime &begin : listed.event->recurrence()->timesInInterval(
                 QDateTime::fromSecsSinceEpoch(days.from - listed.length + 1),
                 QDateTime::fromSecsSinceEpoch(days.to - 1)))
            found.push_back(begin.toSecsSinceEpoch());
        return found;
    }

    ICalFormat m_format;
    std::unordered_map<std::string, MemoryCalendar::Ptr> m_calendars;
    std::vector<Listed> m_events;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    KdeCalendar calendar;
    return peers::runPeer(argc, argv, calendar);
}
