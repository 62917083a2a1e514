#include "Calendar/EventKitSource.h"

#include "MeetingTexts/TitleText.h"
#include "Meetings/BoundedText.h"

#include <QThread>
#include <algorithm>

namespace mivora {

namespace {

bool comesBefore(const CalendarInfo &left, const CalendarInfo &right)
{
    if (titleSortsBefore(left.accountTitle, right.accountTitle))
        return true;
    return !titleSortsBefore(right.accountTitle, left.accountTitle) &&
           titleSortsBefore(left.title, right.title);
}

bool startsBefore(const std::shared_ptr<const Meeting> &left, const std::shared_ptr<const Meeting> &right)
{
    return left->start != right->start ? left->start < right->start
                                       : titleSortsBefore(left->title, right->title);
}

std::optional<Color> colorOf(const std::string &calendarID, const std::vector<CalendarInfo> &calendars)
{
    const auto found = std::find_if(calendars.begin(), calendars.end(),
                                    [&](const CalendarInfo &calendar) { return calendar.id == calendarID; });
    return found == calendars.end() ? std::nullopt : found->color;
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

bool EventKitSource::isNothingToRead() const
{
    // What a desktop forbids is restricted: denied is all that there isn't.
    const AuthorizationStatus status = authorizationStatus();
    return status == AuthorizationStatus::denied ||
           (status == AuthorizationStatus::fullAccess && m_store->isLoaded() && m_store->calendars().empty());
}

void EventKitSource::requestAccess(std::function<void(bool)> answer)
{
    m_store->requestFullAccess(std::move(answer));
}

std::vector<CalendarInfo> EventKitSource::calendars() const
{
    if (authorization() != CalendarAuthorization::granted)
        return {};
    std::vector<CalendarInfo> calendars = m_store->calendars();
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
    const std::vector<CalendarInfo> calendars = m_store->calendars();
    const auto isSelected = [&](const CalendarInfo &calendar) { return calendarIDs->contains(calendar.id); };
    if (calendarIDs && std::none_of(calendars.begin(), calendars.end(), isSelected))
        return {};
    Meetings found = m_store->meetings(start, end, calendarIDs);
    std::stable_sort(found.begin(), found.end(), startsBefore);
    std::vector<Meeting> meetings;
    meetings.reserve(found.size());
    for (const std::shared_ptr<const Meeting> &meeting : found) {
        meetings.push_back(*meeting);
        meetings.back().calendarColor = colorOf(meeting->calendarID, calendars);
    }
    return meetings;
}

void EventKitSource::setOnChange(ChangeHandler handler)
{
    m_onChange = std::move(handler);
}

void EventKitSource::handleStoreChange()
{
    if (QThread::currentThread() != thread())
        qFatal("EventKitSource: changes belong to the main thread");
    if (m_onChange)
        m_onChange();
}

} // namespace mivora
