#pragma once

#include "ICalendar/CalendarText.h"
#include "Meetings/Color.h"
#include "Meetings/Timestamp.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class QTimeZone;

namespace mivora {

/// What the platform says about the permission to read calendars.
enum class AuthorizationStatus {
    notDetermined = 0,
    restricted = 1,
    denied = 2,
    fullAccess = 3,
    writeOnly = 4
};

using ical::ParticipantStatus;

struct StoreAttendee
{
    /// In lower case; empty when there is none.
    std::string address;
    ParticipantStatus status = ParticipantStatus::unknown;
    bool isCurrentUser = false;

    friend bool operator==(const StoreAttendee &, const StoreAttendee &) = default;
};

/// A calendar as a store knows it.
struct StoreCalendar
{
    /// Stable between starts, unique in the store.
    std::string id;
    std::string title;
    /// The name of the account that holds it; nothing when there is none.
    std::optional<std::string> sourceTitle;
    std::optional<Color> color;

    friend bool operator==(const StoreCalendar &, const StoreCalendar &) = default;
};

/// One occurrence of an event: recurrence is expanded, overrides are applied.
struct StoreEvent
{
    /// The UID (RFC 5545).
    std::optional<std::string> eventIdentifier;
    std::optional<std::string> title;
    Timestamp start{};
    Timestamp end{};
    bool isAllDay = false;
    std::optional<std::string> calendarID;
    std::vector<StoreAttendee> attendees;
    /// URL, or the conference link that servers put elsewhere.
    std::optional<std::string> url;
    std::optional<std::string> location;
    std::optional<std::string> notes;

    friend bool operator==(const StoreEvent &, const StoreEvent &) = default;
};

/// Occurrences are shared and never change: an edited event is a new object.
using StoreEvents = std::vector<std::shared_ptr<const StoreEvent>>;

/// A calendar store of the platform. It answers from memory and never blocks: loading and parsing happen
/// elsewhere, and changed() tells when there is something new to see.
class EventStore : public QObject
{
    Q_OBJECT

public:
    using AccessAnswer = std::function<void(bool granted)>;

    using QObject::QObject;

    /// Computed from cached state; cheap enough to be asked every second.
    virtual AuthorizationStatus authorizationStatus() const = 0;

    /// Asks for full access. \a answer is called later on the main thread, once.
    virtual void requestFullAccess(AccessAnswer answer) = 0;

    /// The event calendars, in the store's order.
    virtual std::vector<StoreCalendar> calendars() const = 0;

    /// The occurrences that overlap [from, to): those that start before \a to and end after \a from, and
    /// those without length that start inside. \a calendarIDs restricts them to these calendars; absent means
    /// all. An interval outside of what is loaded is answered from what is there, and is loaded in the
    /// background.
    virtual StoreEvents events(Timestamp from, Timestamp to,
                               const std::optional<std::set<std::string>> &calendarIDs) = 0;

    /// Whether the first load is finished.
    virtual bool isLoaded() const = 0;

    /// The zone in which floating times and whole days are meant, from now on.
    virtual void setTimeZone(const QTimeZone &zone) = 0;

Q_SIGNALS:
    /// Calendars, events or the authorization are not what they were: once per burst of changes.
    void changed();
};

} // namespace mivora
