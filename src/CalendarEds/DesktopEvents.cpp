#include "CalendarEds/DesktopEvents.h"

#include <QRegularExpression>
#include <algorithm>
#include <utility>

namespace mivora {

namespace {

/// The addresses in `texts`, as `ical::mailAddress()` writes them. A path with an address in it is none.
std::vector<std::string> addressesIn(const std::vector<std::string> &texts)
{
    std::vector<std::string> addresses;
    for (const std::string &text : texts)
        if (std::string address = ical::mailAddress(text);
            !address.empty() && address.find('/') == std::string::npos)
            addresses.push_back(std::move(address));
    return addresses;
}

AuthorizationStatus statusFor(DesktopAccess access)
{
    if (access == DesktopAccess::granted)
        return AuthorizationStatus::fullAccess;
    return access == DesktopAccess::refused ? AuthorizationStatus::restricted : AuthorizationStatus::denied;
}

} // namespace

DesktopEvents::DesktopEvents(EventWindow window, std::vector<std::string> addresses,
                             CalendarLoader::Deliver deliver)
    : m_addresses(std::move(addresses)), m_deliver(std::move(deliver)), m_window(std::move(window)),
      m_wantedWindow(m_window)
{
}

void DesktopEvents::setWindow(EventWindow window)
{
    const std::lock_guard lock(m_mutex);
    m_wantedWindow = std::move(window);
}

EventWindow DesktopEvents::window() const
{
    const std::lock_guard lock(m_mutex);
    return m_wantedWindow;
}

void DesktopEvents::setAccess(DesktopAccess access)
{
    m_status = statusFor(access);
}

void DesktopEvents::setAccounts(DesktopAccounts accounts)
{
    std::vector<std::string> ofUser = m_addresses;
    ofUser.insert(ofUser.end(), accounts.mailAddresses.begin(), accounts.mailAddresses.end());
    m_order.clear();
    for (DesktopCalendar &info : accounts.calendars) {
        m_order.push_back(info.id);
        Calendar &calendar = m_calendars[info.id];
        std::vector<std::string> addresses = addressesIn(info.ownerAddresses);
        if (addresses.empty())
            addresses = addressesIn(ofUser);
        if (addresses != std::exchange(calendar.addresses, addresses))
            markAll(calendar);
        calendar.info = std::move(info);
    }
    std::erase_if(m_calendars, [this](const auto &entry) {
        return std::find(m_order.begin(), m_order.end(), entry.first) == m_order.end();
    });
}

void DesktopEvents::startLoad(const std::string &calendarID)
{
    for (auto &[uid, event] : m_calendars.at(calendarID).events)
        for (auto &[recurrenceID, object] : event.objects)
            object.isDoubtful = true;
}

void DesktopEvents::finishLoad(const std::string &calendarID)
{
    Calendar &calendar = m_calendars.at(calendarID);
    for (auto &[uid, event] : calendar.events)
        if (std::erase_if(event.objects, [](const auto &object) { return object.second.isDoubtful; }) > 0)
            calendar.changed.insert(uid);
}

void DesktopEvents::putObjects(const std::string &calendarID, std::vector<CalendarObject> objects)
{
    Calendar &calendar = m_calendars.at(calendarID);
    for (CalendarObject &object : objects) {
        Object &known = calendar.events[object.name.uid].objects[object.name.recurrenceID];
        known.isDoubtful = false;
        if (object.text != std::exchange(known.text, object.text))
            calendar.changed.insert(object.name.uid);
    }
}

void DesktopEvents::removeObjects(const std::string &calendarID, const std::vector<ObjectName> &names)
{
    Calendar &calendar = m_calendars.at(calendarID);
    for (const ObjectName &name : names) {
        auto &objects = calendar.events[name.uid].objects;
        if (name.recurrenceID.empty())
            objects.clear();
        else
            objects.erase(name.recurrenceID);
        calendar.changed.insert(name.uid);
    }
}

void DesktopEvents::putTimeZone(const std::string &calendarID, const std::string &id, std::string text)
{
    Calendar &calendar = m_calendars.at(calendarID);
    if (text != std::exchange(calendar.timeZones[id], text))
        markAll(calendar);
}

void DesktopEvents::settle(bool hasAll)
{
    m_isLoaded = m_isLoaded || hasAll;
    takeWindow();
    m_deliver({.meetings = meetings(), .calendars = calendars(), .status = m_status, .isLoaded = m_isLoaded});
}

void DesktopEvents::report(const std::string &message)
{
    // An address may be a secret as a whole; it is told of by its host.
    static const QRegularExpression address(QStringLiteral(R"([a-z]+://(?:[^/\s@]*@)?([^/?#\s"]*)\S*)"),
                                            QRegularExpression::CaseInsensitiveOption);
    const QString told = QString::fromStdString(message).replace(address, QStringLiteral("\\1"));
    qCWarning(calendarLog, "%s", printable(told.toStdString()).c_str());
}

void DesktopEvents::takeWindow()
{
    EventWindow wanted = window();
    if (wanted == m_window)
        return;
    m_window = std::move(wanted);
    for (auto &[id, calendar] : m_calendars)
        markAll(calendar);
}

/// Of what is not what it was at the last call it makes new ones, and of nothing else.
Meetings DesktopEvents::meetings()
{
    Meetings all;
    for (auto &[id, calendar] : m_calendars) {
        for (const std::string &uid : std::exchange(calendar.changed, {})) {
            Event &event = calendar.events[uid];
            event.meetings = meetingsOf(calendar, event);
            if (event.objects.empty())
                calendar.events.erase(uid);
        }
        for (const auto &[uid, event] : calendar.events)
            all.insert(all.end(), event.meetings.begin(), event.meetings.end());
    }
    return all;
}

std::vector<CalendarInfo> DesktopEvents::calendars() const
{
    std::vector<CalendarInfo> all;
    for (const std::string &id : m_order) {
        const DesktopCalendar &info = m_calendars.at(id).info;
        all.push_back({.id = std::string(idPrefix) + id,
                       .title = info.title,
                       .accountTitle = info.account,
                       .color = colorFrom(info.color)});
    }
    return all;
}

void DesktopEvents::markAll(Calendar &calendar)
{
    for (const auto &[uid, event] : calendar.events)
        calendar.changed.insert(uid);
}

Meetings DesktopEvents::meetingsOf(const Calendar &calendar, const Event &event)
{
    std::string text("BEGIN:VCALENDAR\r\nVERSION:2.0\r\n");
    for (const auto &[id, definition] : calendar.timeZones)
        text.append(definition);
    for (const auto &[recurrenceID, object] : event.objects)
        text.append(object.text);
    ical::CalendarText read = ical::readCalendarText(text.append("END:VCALENDAR\r\n"), m_window);
    if (!read.problems.empty()) {
        const std::string problem =
            "an event of the calendar \"" + calendar.info.title + "\": " + read.problems.front().message;
        // It is read again for other days.
        if (m_problems.insert(problem).second)
            report(problem);
    }
    Meetings meetings;
    const std::string calendarID = std::string(idPrefix) + calendar.info.id;
    for (ical::Occurrence &occurrence : read.occurrences)
        meetings.push_back(meetingOf(std::move(occurrence), calendarID, calendar.addresses));
    return meetings;
}

} // namespace mivora
