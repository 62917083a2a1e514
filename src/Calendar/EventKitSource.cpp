#include "Calendar/EventKitSource.h"

#include "Calendar/AccessMemory.h"
#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"
#include "Meetings/BoundedText.h"

#include <QThread>
#include <algorithm>
#include <tuple>

namespace mivora {

namespace {

constexpr Seconds oneDay{86400};
/// Nobody needs more at a time, and what is loaded stays small.
constexpr Seconds longestInterval = 400 * oneDay;
/// Times that calendars can hold days for.
constexpr Timestamp earliestTime = timestampFromSeconds(-6e10);
constexpr Timestamp latestTime = timestampFromSeconds(2.5e11);

EventWindow windowFor(Timestamp from, Timestamp to, const QTimeZone &zone)
{
    return {startOfDay(from, zone, -1), startOfDay(to, zone, 3), zone};
}

/// The days between the end of what is asked for and the end of what is loaded are reloaded ahead of need.
bool isCovered(Timestamp from, Timestamp to, const EventWindow &window)
{
    return from >= window.from && to + oneDay <= window.to;
}

/// Whether two updates say the same. The same meeting is often the same object.
bool isSame(const StoreUpdate &left, const StoreUpdate &right)
{
    return left.status == right.status && left.isLoaded == right.isLoaded &&
           left.calendars == right.calendars &&
           std::ranges::equal(left.meetings, right.meetings, [](const auto &one, const auto &other) {
               return one == other || *one == *other;
           });
}

bool comesBefore(const CalendarInfo &left, const CalendarInfo &right)
{
    if (titleSortsBefore(left.accountTitle, right.accountTitle))
        return true;
    return !titleSortsBefore(right.accountTitle, left.accountTitle) &&
           titleSortsBefore(left.title, right.title);
}

std::optional<Color> colorOf(const std::string &calendarID, const std::vector<CalendarInfo> &calendars)
{
    const auto found = std::find_if(calendars.begin(), calendars.end(),
                                    [&](const CalendarInfo &calendar) { return calendar.id == calendarID; });
    return found == calendars.end() ? std::nullopt : found->color;
}

} // namespace

EventWindow windowAround(Timestamp now, const QTimeZone &zone)
{
    return windowFor(now, now + oneDay, zone);
}

EventKitSource::EventKitSource(AccessMemory &access, EventWindow window, Loaders loaders)
    : m_access(access), m_window(std::move(window))
{
    for (std::unique_ptr<CalendarLoader> &loader : loaders)
        m_parts.push_back({std::move(loader)});
    connect(&m_access, &AccessMemory::changed, this, &EventKitSource::start);
    connect(&m_access, &AccessMemory::changed, this, &EventKitSource::announce);
    // With the event loop: until then the program is about to show its item, which comes first.
    QMetaObject::invokeMethod(this, &EventKitSource::start, Qt::QueuedConnection);
}

EventKitSource::~EventKitSource()
{
    const std::lock_guard lock(m_inbox->mutex);
    m_inbox->source = nullptr;
}

void EventKitSource::start()
{
    if (!m_access.isAllowed() || std::exchange(m_inbox->source, this))
        return;
    for (Part &part : m_parts) {
        const auto deliver = [inbox = m_inbox, &part](StoreUpdate update) {
            std::ranges::sort(update.meetings, {}, [](const std::shared_ptr<const Meeting> &meeting) {
                return std::tie(meeting->start, meeting->id, meeting->calendarID, meeting->title);
            });
            const std::lock_guard lock(inbox->mutex);
            if (!inbox->source)
                return;
            inbox->updates.emplace_back(&part, std::move(update));
            if (inbox->updates.size() == 1)
                QMetaObject::invokeMethod(inbox->source, &EventKitSource::takeUpdates, Qt::QueuedConnection);
        };
        part.loader->start(m_window, deliver);
    }
}

void EventKitSource::takeUpdates()
{
    std::vector<std::pair<Part *, StoreUpdate>> updates;
    {
        const std::lock_guard lock(m_inbox->mutex);
        updates.swap(m_inbox->updates);
    }
    for (auto &[part, update] : updates)
        take(*part, std::move(update));
}

AuthorizationStatus EventKitSource::authorizationStatus() const
{
    if (!m_access.isAllowed())
        return AuthorizationStatus::notDetermined;
    const auto hasStatus = [this](AuthorizationStatus status) {
        return std::any_of(m_parts.begin(), m_parts.end(),
                           [status](const Part &part) { return part.found.status == status; });
    };
    for (const auto status : {AuthorizationStatus::fullAccess, AuthorizationStatus::restricted})
        if (hasStatus(status))
            return status;
    return AuthorizationStatus::denied;
}

CalendarAuthorization EventKitSource::authorization() const
{
    switch (authorizationStatus()) {
    case AuthorizationStatus::notDetermined:
        return CalendarAuthorization::notDetermined;
    case AuthorizationStatus::fullAccess:
        return CalendarAuthorization::granted;
    default:
        return CalendarAuthorization::denied;
    }
}

bool EventKitSource::isNothingToRead() const
{
    // What a desktop forbids is restricted: denied is all that there isn't.
    const AuthorizationStatus status = authorizationStatus();
    return status == AuthorizationStatus::denied ||
           (status == AuthorizationStatus::fullAccess && isLoaded() && allCalendars().empty());
}

void EventKitSource::requestAccess(std::function<void(bool)> answer)
{
    m_access.allow();
    m_waiting.push_back(std::move(answer));
    QMetaObject::invokeMethod(this, &EventKitSource::answerRequests, Qt::QueuedConnection);
}

void EventKitSource::answerRequests()
{
    if (!isLoaded())
        return;
    for (const auto &answer : std::exchange(m_waiting, {}))
        answer(authorizationStatus() == AuthorizationStatus::fullAccess);
}

std::vector<CalendarInfo> EventKitSource::allCalendars() const
{
    std::vector<CalendarInfo> all;
    for (const Part &part : m_parts)
        all.insert(all.end(), part.found.calendars.begin(), part.found.calendars.end());
    return all;
}

std::vector<CalendarInfo> EventKitSource::calendars() const
{
    if (authorization() != CalendarAuthorization::granted)
        return {};
    std::vector<CalendarInfo> calendars = allCalendars();
    for (CalendarInfo &calendar : calendars) {
        calendar.title = boundedText(calendar.title);
        calendar.accountTitle = boundedText(calendar.accountTitle);
    }
    std::stable_sort(calendars.begin(), calendars.end(), comesBefore);
    return calendars;
}

std::vector<Meeting> EventKitSource::meetings(Timestamp start, Timestamp end,
                                              const std::optional<std::set<std::string>> &calendarIDs)
{
    if (authorization() != CalendarAuthorization::granted)
        return {};
    const std::vector<CalendarInfo> calendars = allCalendars();
    const auto isSelected = [&](const CalendarInfo &calendar) { return calendarIDs->contains(calendar.id); };
    if (calendarIDs && std::none_of(calendars.begin(), calendars.end(), isSelected))
        return {};
    extendWindow(start, end);
    Meetings found;
    for (const Part &part : m_parts)
        for (const std::shared_ptr<const Meeting> &meeting : part.found.meetings)
            if (overlaps(meeting->start, meeting->end, start, end) &&
                (!calendarIDs || calendarIDs->contains(meeting->calendarID)))
                found.push_back(meeting);
    std::ranges::stable_sort(found, startsBefore, &std::shared_ptr<const Meeting>::operator*);
    std::vector<Meeting> meetings;
    meetings.reserve(found.size());
    for (const std::shared_ptr<const Meeting> &meeting : found) {
        meetings.push_back(*meeting);
        meetings.back().calendarColor = colorOf(meeting->calendarID, calendars);
    }
    return meetings;
}

bool EventKitSource::isLoaded() const
{
    return !m_access.isAllowed() ||
           std::all_of(m_parts.begin(), m_parts.end(), [](const Part &part) { return part.found.isLoaded; });
}

void EventKitSource::setTimeZone(const QTimeZone &zone)
{
    if (zone != m_window.zone)
        setWindow({m_window.from, m_window.to, zone});
}

void EventKitSource::extendWindow(Timestamp from, Timestamp to)
{
    from = std::clamp(from, earliestTime, latestTime);
    to = std::clamp(to, from, from + longestInterval);
    if (!m_asked || std::max(to, m_asked->second) - std::min(from, m_asked->first) > longestInterval)
        m_asked = {from, to};
    m_asked = {std::min(from, m_asked->first), std::max(to, m_asked->second)};
    if (isCovered(from, to, m_window))
        return;
    // All that was asked for lately stays loaded, else two questions in turn would have it loaded for ever.
    setWindow(windowFor(m_asked->first, m_asked->second, m_window.zone));
    m_asked = {from, to};
}

void EventKitSource::setWindow(EventWindow window)
{
    m_window = std::move(window);
    if (!m_inbox->source)
        return;
    for (const Part &part : m_parts)
        part.loader->setWindow(m_window);
}

void EventKitSource::take(Part &part, StoreUpdate update)
{
    const bool isChange = !isSame(update, part.found);
    part.found = std::move(update);
    answerRequests();
    if (isChange)
        announce();
}

void EventKitSource::announce()
{
    if (QThread::currentThread() != thread())
        qFatal("EventKitSource: changes belong to the main thread");
    if (m_onChange)
        m_onChange();
    Q_EMIT changed();
}

} // namespace mivora
