#include "Calendar/desktop/DesktopEvents.h"

#include "Calendar/CalendarColor.h"
#include "Calendar/CurrentUser.h"
#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <iterator>
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

/// As one text, with those of \a timeZones that it may name.
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

} // namespace

DesktopEvents::DesktopEvents(EventWindow window, std::vector<std::string> addresses, Report report)
    : m_window(std::move(window)), m_addresses(std::move(addresses)), m_report(std::move(report))
{
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
    for (auto calendar = m_calendars.begin(); calendar != m_calendars.end();) {
        if (std::find(m_order.begin(), m_order.end(), calendar->first) != m_order.end()) {
            ++calendar;
            continue;
        }
        drop(calendar->second);
        calendar = m_calendars.erase(calendar);
    }
}

void DesktopEvents::drop(Calendar &calendar)
{
    for (auto &[uid, event] : calendar.events)
        m_dropped.append({std::move(event.occurrences), {}});
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

void DesktopEvents::put(const std::string &calendarID, std::vector<CalendarObject> objects)
{
    if (Calendar *calendar = find(calendarID))
        for (CalendarObject &object : objects)
            put(*calendar, std::move(object));
}

void DesktopEvents::put(Calendar &calendar, CalendarObject object)
{
    ensureLineEnd(object.text);
    Event &event = calendar.events[object.name.uid];
    const auto [known, isNew] = event.objects.try_emplace(object.name.recurrenceID);
    known->second.isDoubtful = false;
    if (known->second.text == object.text)
        return;
    known->second.text = std::move(object.text);
    calendar.changed.insert_or_assign(object.name.uid, Reason::newText);
}

void DesktopEvents::remove(const std::string &calendarID, const std::vector<ObjectName> &names)
{
    if (Calendar *calendar = find(calendarID))
        for (const ObjectName &name : names)
            remove(*calendar, name);
}

void DesktopEvents::remove(Calendar &calendar, const ObjectName &name)
{
    const auto event = calendar.events.find(name.uid);
    if (event == calendar.events.end())
        return;
    if (name.recurrenceID.empty())
        event->second.objects.clear();
    else
        event->second.objects.erase(name.recurrenceID);
    calendar.changed.try_emplace(name.uid, Reason::newContext);
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

void DesktopEvents::setWindow(EventWindow window)
{
    m_window = std::move(window);
    for (auto &[id, calendar] : m_calendars)
        markAll(calendar);
}

EventChanges DesktopEvents::update()
{
    EventChanges changes = std::exchange(m_dropped, {});
    for (auto &[id, calendar] : m_calendars)
        for (const auto &[uid, reason] : std::exchange(calendar.changed, {}))
            expand(calendar, uid, reason, changes);
    return changes;
}

std::vector<StoreCalendar> DesktopEvents::calendars() const
{
    std::vector<StoreCalendar> all;
    for (const std::string &id : m_order) {
        const DesktopCalendar &info = m_calendars.at(id).info;
        all.push_back(
            {info.id, info.title, info.account, info.color ? colorFrom(*info.color) : std::nullopt});
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

void DesktopEvents::expand(Calendar &calendar, const std::string &uid, Reason reason, EventChanges &changes)
{
    const auto event = calendar.events.find(uid);
    if (event == calendar.events.end())
        return;
    StoreEvents occurrences = occurrencesOf(calendar, event->second, reason);
    keepUnchanged(std::move(event->second.occurrences), occurrences, changes);
    event->second.occurrences = std::move(occurrences);
    if (event->second.objects.empty())
        calendar.events.erase(event);
}

StoreEvents DesktopEvents::occurrencesOf(const Calendar &calendar, const Event &event, Reason reason)
{
    StoreEvents events;
    if (event.objects.empty())
        return events;
    std::vector<const std::string *> texts;
    for (const auto &[recurrenceID, object] : event.objects)
        texts.push_back(&object.text);
    ical::CalendarText text = ical::readCalendarText(calendarText(texts, calendar.timeZones), m_window);
    // Other days don't make an old problem new.
    if (reason == Reason::newText)
        reportProblems(calendar, text.problems);
    for (ical::Occurrence &occurrence : text.occurrences)
        events.push_back(std::make_shared<const StoreEvent>(
            storeEventOf(std::move(occurrence), calendar.info.id, calendar.addresses)));
    return events;
}

void DesktopEvents::reportProblems(const Calendar &calendar,
                                   const std::vector<ical::TextProblem> &problems) const
{
    if (problems.empty())
        return;
    std::string message = "an event of the calendar \"";
    message.append(calendar.info.title).append("\": ").append(problems.front().message);
    m_report(message);
}

} // namespace mivora
