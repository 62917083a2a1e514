#include "CalendarEds/DesktopEvents.h"

#include "Calendar/CalendarColor.h"
#include "Calendar/CalendarLog.h"
#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <utility>

namespace mivora {

namespace {

/// For searching: long lines are folded anywhere.
std::string unfoldedText(const std::vector<const std::string *> &objects)
{
    std::string text, buffer;
    for (const std::string *object : objects)
        for (std::string_view rest = *object; !rest.empty();)
            text.append(ical::unfolded(ical::takeLine(rest), buffer)).append(1, '\n');
    return text;
}

/// As one text, with those of `timeZones` that it may name.
std::string calendarText(const std::vector<const std::string *> &objects,
                         const std::map<std::string, std::string> &timeZones)
{
    static constexpr std::string_view begin = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n", end = "END:VCALENDAR\r\n";
    std::string text(begin);
    const std::string searched = timeZones.empty() ? std::string() : unfoldedText(objects);
    for (const auto &[id, definition] : timeZones)
        if (searched.find(id) != std::string::npos)
            text.append(definition);
    for (const std::string *object : objects)
        text.append(*object);
    return text.append(end);
}

void ensureLineEnd(std::string &text)
{
    if (!text.ends_with('\n'))
        text.append("\r\n");
}

AuthorizationStatus statusFor(DesktopAccess access)
{
    switch (access) {
    case DesktopAccess::granted:
        return AuthorizationStatus::fullAccess;
    case DesktopAccess::refused:
        return AuthorizationStatus::restricted;
    case DesktopAccess::unavailable:
        break;
    }
    return AuthorizationStatus::denied;
}

bool isSameWindow(const EventWindow &left, const EventWindow &right)
{
    return left.from == right.from && left.to == right.to && left.zone == right.zone;
}

} // namespace

DesktopEvents::DesktopEvents(EventWindow window, std::vector<std::string> addresses,
                             CalendarLoader::Deliver deliver)
    : m_addresses(std::move(addresses)), m_deliver(std::move(deliver)), m_window(std::move(window)),
      m_wantedWindow(m_window)
{
    for (std::string &address : m_addresses)
        address = ical::mailAddress(address);
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
    std::vector<std::string> userAddresses = m_addresses;
    userAddresses.insert(userAddresses.end(), accounts.mailAddresses.begin(), accounts.mailAddresses.end());
    m_order.clear();
    for (DesktopCalendar &info : accounts.calendars) {
        m_order.push_back(info.id);
        Calendar &calendar = m_calendars[info.id];
        const auto &addresses = info.ownerAddresses.empty() ? userAddresses : info.ownerAddresses;
        if (addresses != std::exchange(calendar.addresses, addresses))
            markAll(calendar);
        calendar.info = std::move(info);
    }
    std::erase_if(m_calendars, [this](const auto &entry) {
        if (std::find(m_order.begin(), m_order.end(), entry.first) != m_order.end())
            return false;
        for (const auto &[uid, event] : entry.second.events)
            m_dropped.insert(m_dropped.end(), event.meetings.begin(), event.meetings.end());
        return true;
    });
}

void DesktopEvents::startLoad(const std::string &calendarID)
{
    Calendar *calendar = find(calendarID);
    if (!calendar)
        return;
    for (auto &[uid, event] : calendar->events)
        for (auto &[recurrenceID, object] : event.objects)
            object.isDoubtful = true;
}

void DesktopEvents::finishLoad(const std::string &calendarID)
{
    Calendar *calendar = find(calendarID);
    if (!calendar)
        return;
    for (auto &[uid, event] : calendar->events) {
        if (std::erase_if(event.objects, [](const auto &object) { return object.second.isDoubtful; }) > 0)
            calendar->changed.try_emplace(uid, Reason::newContext);
    }
}

void DesktopEvents::putObjects(const std::string &calendarID, std::vector<CalendarObject> objects)
{
    Calendar *calendar = find(calendarID);
    if (!calendar)
        return;
    for (CalendarObject &object : objects) {
        ensureLineEnd(object.text);
        Object &known = calendar->events[object.name.uid].objects[object.name.recurrenceID];
        known.isDoubtful = false;
        if (object.text != std::exchange(known.text, object.text))
            calendar->changed.insert_or_assign(object.name.uid, Reason::newText);
    }
}

void DesktopEvents::removeObjects(const std::string &calendarID, const std::vector<ObjectName> &names)
{
    Calendar *calendar = find(calendarID);
    if (!calendar)
        return;
    for (const ObjectName &name : names) {
        const auto event = calendar->events.find(name.uid);
        if (event == calendar->events.end())
            continue;
        if (name.recurrenceID.empty())
            event->second.objects.clear();
        else
            event->second.objects.erase(name.recurrenceID);
        calendar->changed.try_emplace(name.uid, Reason::newContext);
    }
}

void DesktopEvents::putTimeZone(const std::string &calendarID, const std::string &id, std::string text)
{
    Calendar *calendar = find(calendarID);
    if (!calendar)
        return;
    ensureLineEnd(text);
    if (text == std::exchange(calendar->timeZones[id], text))
        return;
    markAll(*calendar);
}

void DesktopEvents::settle(bool hasAll)
{
    m_isLoaded = m_isLoaded || hasAll;
    takeWindow();
    StoreUpdate news{
        .changes = update(), .calendars = calendars(), .status = m_status, .isLoaded = m_isLoaded};
    if (*news.calendars == m_told)
        news.calendars.reset();
    else
        m_told = *news.calendars;
    m_deliver(std::move(news));
}

void DesktopEvents::report(const std::string &message)
{
    qCWarning(calendarLog, "%s", printable(message).c_str());
}

void DesktopEvents::takeWindow()
{
    EventWindow wanted = window();
    if (isSameWindow(wanted, m_window))
        return;
    m_window = std::move(wanted);
    for (auto &[id, calendar] : m_calendars)
        markAll(calendar);
}

/// Expands what is not what it was at the last call, and nothing else.
MeetingChanges DesktopEvents::update()
{
    MeetingChanges changes{.removed = std::exchange(m_dropped, {}), .added = {}};
    for (auto &[id, calendar] : m_calendars)
        for (const auto &[uid, reason] : std::exchange(calendar.changed, {}))
            expand(calendar, uid, reason, changes);
    return changes;
}

std::vector<CalendarInfo> DesktopEvents::calendars() const
{
    std::vector<CalendarInfo> all;
    for (const std::string &id : m_order) {
        const DesktopCalendar &info = m_calendars.at(id).info;
        all.push_back({.id = std::string(idPrefix) + id,
                       .title = info.title,
                       .accountTitle = info.account.value_or(""),
                       .color = info.color ? colorFrom(*info.color) : std::nullopt});
    }
    return all;
}

DesktopEvents::Calendar *DesktopEvents::find(const std::string &id)
{
    const auto found = m_calendars.find(id);
    return found == m_calendars.end() ? nullptr : &found->second;
}

void DesktopEvents::markAll(Calendar &calendar)
{
    for (const auto &[uid, event] : calendar.events)
        calendar.changed.try_emplace(uid, Reason::newContext);
}

void DesktopEvents::expand(Calendar &calendar, const std::string &uid, Reason reason, MeetingChanges &changes)
{
    const auto event = calendar.events.find(uid);
    if (event == calendar.events.end())
        return;
    Meetings meetings = meetingsOf(calendar, event->second, reason);
    keepUnchanged(std::move(event->second.meetings), meetings, changes);
    event->second.meetings = std::move(meetings);
    if (event->second.objects.empty())
        calendar.events.erase(event);
}

Meetings DesktopEvents::meetingsOf(const Calendar &calendar, const Event &event, Reason reason)
{
    Meetings meetings;
    if (event.objects.empty())
        return meetings;
    std::vector<const std::string *> texts;
    for (const auto &[recurrenceID, object] : event.objects)
        texts.push_back(&object.text);
    ical::CalendarText text = ical::readCalendarText(calendarText(texts, calendar.timeZones), m_window);
    // Other days don't make an old problem new.
    if (reason == Reason::newText && !text.problems.empty())
        report("an event of the calendar \"" + calendar.info.title + "\": " + text.problems.front().message);
    const std::string calendarID = std::string(idPrefix) + calendar.info.id;
    for (ical::Occurrence &occurrence : text.occurrences)
        meetings.push_back(meetingOf(std::move(occurrence), calendarID, calendar.addresses));
    return meetings;
}

} // namespace mivora
