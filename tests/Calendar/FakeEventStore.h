#pragma once

#include "Calendar/EventStore.h"

#include <QTimeZone>
#include <QTimer>

namespace mivora {

/// A store whose answers are set by the test, and which counts the queries.
class FakeEventStore final : public EventStore
{
public:
    AuthorizationStatus status = AuthorizationStatus::fullAccess;
    std::vector<StoreCalendar> storeCalendars;
    StoreEvents storeEvents;
    bool grants = true;
    bool loaded = true;
    int queries = 0;
    std::optional<std::set<std::string>> lastSelection;
    QTimeZone zone;

    AuthorizationStatus authorizationStatus() const override { return status; }

    void requestFullAccess(AccessAnswer answer) override
    {
        QTimer::singleShot(0, this, [this, answer] { answer(grants); });
    }

    std::vector<StoreCalendar> calendars() const override { return storeCalendars; }

    StoreEvents events(Timestamp, Timestamp, const std::optional<std::set<std::string>> &ids) override
    {
        ++queries;
        lastSelection = ids;
        return storeEvents;
    }

    bool isLoaded() const override { return loaded; }

    void setTimeZone(const QTimeZone &newZone) override { zone = newZone; }

    StoreEvent &add(const std::string &title, double start, const std::string &calendarID = "work")
    {
        auto event = std::make_shared<StoreEvent>();
        event->eventIdentifier = title;
        event->title = title;
        event->start = timestampFromSeconds(start);
        event->end = timestampFromSeconds(start + 3600);
        event->calendarID = calendarID;
        storeEvents.push_back(event);
        return *event;
    }
};

} // namespace mivora
