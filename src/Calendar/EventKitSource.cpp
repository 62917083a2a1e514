#include "Calendar/EventKitSource.h"

#include "MeetingTexts/TitleText.h"
#include "Meetings/BoundedText.h"

#include <QThread>
#include <algorithm>

namespace mivora {

namespace {

constexpr std::uint64_t queriesRemembered = 4;

Participation participationOf(ParticipantStatus status)
{
    switch (status) {
    case ParticipantStatus::accepted:
        return Participation::accepted;
    case ParticipantStatus::declined:
        return Participation::declined;
    case ParticipantStatus::tentative:
        return Participation::tentative;
    default:
        return Participation::unknown;
    }
}

Participation ownParticipation(const std::vector<StoreAttendee> &attendees)
{
    const auto self = std::find_if(attendees.begin(), attendees.end(),
                                   [](const StoreAttendee &attendee) { return attendee.isCurrentUser; });
    return self == attendees.end() ? Participation::unknown : participationOf(self->status);
}

std::optional<Color> colorOf(const std::string &calendarID, const std::vector<StoreCalendar> &calendars)
{
    const auto found = std::find_if(calendars.begin(), calendars.end(),
                                    [&](const StoreCalendar &calendar) { return calendar.id == calendarID; });
    return found == calendars.end() ? std::nullopt : found->color;
}

EventSnapshot snapshotOf(const StoreEvent &event, const std::vector<StoreCalendar> &calendars)
{
    EventSnapshot snapshot;
    snapshot.eventIdentifier = event.eventIdentifier;
    snapshot.title = event.title.value_or(std::string());
    snapshot.start = event.start;
    snapshot.end = event.end;
    snapshot.calendarID = *event.calendarID;
    snapshot.calendarColor = colorOf(*event.calendarID, calendars);
    snapshot.isAllDay = event.isAllDay;
    snapshot.participation = ownParticipation(event.attendees);
    snapshot.attendeeCount = std::int64_t(event.attendees.size());
    snapshot.url = event.url;
    snapshot.location = event.location;
    snapshot.notes = event.notes;
    return snapshot;
}

std::set<std::string> selectedCalendars(const std::vector<StoreCalendar> &calendars,
                                        const std::set<std::string> &wanted)
{
    std::set<std::string> selected;
    for (const StoreCalendar &calendar : calendars) {
        if (wanted.contains(calendar.id))
            selected.insert(calendar.id);
    }
    return selected;
}

bool comesBefore(const Meeting *left, const Meeting *right)
{
    if (left->start != right->start)
        return left->start < right->start;
    return titleSortsBefore(left->title, right->title);
}

} // namespace

EventKitSource::EventKitSource(std::unique_ptr<EventStore> store, QObject *parent)
    : QObject(parent), m_store(std::move(store))
{
    connect(m_store.get(), &EventStore::changed, this, &EventKitSource::handleStoreChange);
}

CalendarAuthorization EventKitSource::authorization() const
{
    switch (m_store->authorizationStatus()) {
    case AuthorizationStatus::notDetermined:
        return CalendarAuthorization::notDetermined;
    case AuthorizationStatus::fullAccess:
        return CalendarAuthorization::granted;
    default:
        return CalendarAuthorization::denied;
    }
}

void EventKitSource::requestAccess(std::function<void(bool)> answer)
{
    m_store->requestFullAccess(std::move(answer));
}

std::vector<CalendarInfo> EventKitSource::calendars() const
{
    std::vector<CalendarInfo> infos;
    if (authorization() != CalendarAuthorization::granted)
        return infos;
    for (const StoreCalendar &calendar : m_store->calendars())
        infos.push_back({calendar.id, boundedText(calendar.title),
                         boundedText(calendar.sourceTitle.value_or(std::string())), calendar.color});
    std::stable_sort(infos.begin(), infos.end(), [](const CalendarInfo &left, const CalendarInfo &right) {
        if (titleSortsBefore(left.accountTitle, right.accountTitle))
            return true;
        return !titleSortsBefore(right.accountTitle, left.accountTitle) &&
               titleSortsBefore(left.title, right.title);
    });
    return infos;
}

std::vector<Meeting> EventKitSource::meetings(Timestamp start, Timestamp end,
                                              const std::optional<std::set<std::string>> &calendarIDs)
{
    if (authorization() != CalendarAuthorization::granted)
        return {};
    startQuery(m_store->calendars());
    std::optional<std::set<std::string>> selected;
    if (calendarIDs) {
        selected = selectedCalendars(m_knownCalendars, *calendarIDs);
        if (selected->empty())
            return {};
    }
    std::vector<const Meeting *> found;
    for (const std::shared_ptr<const StoreEvent> &event : m_store->events(start, end, selected)) {
        if (event->calendarID)
            found.push_back(&converted(event));
    }
    std::stable_sort(found.begin(), found.end(), comesBefore);
    std::vector<Meeting> meetings;
    meetings.reserve(found.size());
    for (const Meeting *meeting : found)
        meetings.push_back(*meeting);
    forgetUnused(meetings.size());
    return meetings;
}

void EventKitSource::setOnChange(ChangeHandler handler)
{
    m_onChange = std::move(handler);
}

void EventKitSource::startQuery(std::vector<StoreCalendar> calendars)
{
    ++m_query;
    if (calendars == m_knownCalendars)
        return;
    // Meetings hold the colour of their calendar.
    m_knownCalendars = std::move(calendars);
    m_converted.clear();
}

const Meeting &EventKitSource::converted(const std::shared_ptr<const StoreEvent> &event)
{
    // Looking for a join link reads all of an event's text: done once for each event object.
    const auto [found, isNew] = m_converted.try_emplace(event.get());
    if (isNew) {
        found->second.event = event;
        found->second.meeting = Meeting::fromSnapshot(snapshotOf(*event, m_knownCalendars));
    }
    found->second.lastQuery = m_query;
    return found->second.meeting;
}

void EventKitSource::forgetUnused(std::size_t inUse)
{
    // A refresh asks a few times, for today and for tomorrow: what the last queries gave is kept.
    if (m_converted.size() <= 2 * inUse + 64)
        return;
    std::erase_if(m_converted, [this](const auto &entry) {
        return entry.second.lastQuery + queriesRemembered <= m_query;
    });
}

void EventKitSource::handleStoreChange()
{
    if (QThread::currentThread() != thread())
        qFatal("EventKitSource: changes belong to the main thread");
    if (m_onChange)
        m_onChange();
}

} // namespace mivora
