// A program that keeps its calendar in KCalendarCore.

#include "CalendarPeer.h"

#include <KCalendarCore/ICalFormat>
#include <KCalendarCore/MemoryCalendar>
#include <KCalendarCore/OccurrenceIterator>
#include <QCoreApplication>
#include <QTimeZone>
#include <set>

namespace {

using namespace KCalendarCore;

class KdeCalendar final : public peers::CalendarLibrary
{
    void read(const std::string &name, const char *text, std::size_t length) override
    {
        const QByteArray bytes = QByteArray::fromRawData(text, int(length));
        if (m_names.insert(name).second)
            parse(bytes, m_calendar);
        else
            replace(bytes);
    }

    void parse(const QByteArray &text, const MemoryCalendar::Ptr &calendar)
    {
        if (!m_format.fromRawString(calendar, text))
            qFatal("not a calendar");
    }

    void replace(const QByteArray &text)
    {
        const MemoryCalendar::Ptr changed(new MemoryCalendar(QTimeZone::utc()));
        parse(text, changed);
        for (const Event::Ptr &event : changed->rawEvents()) {
            if (const Event::Ptr old = m_calendar->event(event->uid()))
                m_calendar->deleteEvent(old);
            m_calendar->addEvent(Event::Ptr(event->clone()));
        }
    }

    long occurrences(peers::Days days) override
    {
        long count = 0;
        // The last second counts in this interface.
        OccurrenceIterator occurrence(*m_calendar, QDateTime::fromSecsSinceEpoch(days.from),
                                      QDateTime::fromSecsSinceEpoch(days.to - 1));
        while (occurrence.hasNext()) {
            occurrence.next();
            ++count;
        }
        return count;
    }

    ICalFormat m_format;
    MemoryCalendar::Ptr m_calendar{new MemoryCalendar(QTimeZone::systemTimeZone())};
    std::set<std::string> m_names;
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    KdeCalendar calendar;
    return peers::runPeer(argc, argv, calendar);
}
