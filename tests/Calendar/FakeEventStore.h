#pragma once

#include "Calendar/EventStore.h"

#include <QTimeZone>
#include <QTimer>
#include <deque>

namespace mivora {

/// A store whose answers are set by the test, and which counts the queries.
class FakeEventStore final : public EventStore
{
public:
    AuthorizationStatus status = AuthorizationStatus::fullAccess;
    std::vector<CalendarInfo> storeCalendars;
    std::deque<EventSnapshot> storeEvents;
    bool loaded = true;
    int queries = 0;
    QTimeZone zone;

    AuthorizationStatus authorizationStatus() const override { return status; }

    void requestFullAccess(AccessAnswer answer) override
    {
        QTimer::singleShot(0, this, [answer] { answer(true); });
    }

    std::vector<CalendarInfo> calendars() const override { return storeCalendars; }

    Meetings meetings(Timestamp, Timestamp, const std::optional<std::set<std::string>> &ids) override
    {
        ++queries;
        Meetings meetings;
        for (const EventSnapshot &event : storeEvents)
            if (!ids || ids->contains(event.calendarID))
                meetings.push_back(std::make_shared<const Meeting>(Meeting::fromSnapshot(event)));
        return meetings;
    }

    bool isLoaded() const override { return loaded; }

    void setTimeZone(const QTimeZone &newZone) override { zone = newZone; }

    /// Adds a meeting of an hour.
    EventSnapshot &add(const std::string &title, double start, const std::string &calendarID = "work")
    {
        return storeEvents.emplace_back(EventSnapshot{.eventIdentifier = title,
                                                      .title = title,
                                                      .start = timestampFromSeconds(start),
                                                      .end = timestampFromSeconds(start + 3600),
                                                      .calendarID = calendarID});
    }
};

} // namespace mivora
