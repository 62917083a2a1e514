#pragma once

#include "Meetings/CalendarInfo.h"
#include "Meetings/Meeting.h"

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

/// Meetings are shared and never change: an edited event is a new object.
using Meetings = std::vector<std::shared_ptr<const Meeting>>;

/// The calendar store of the platform. It answers from memory and never blocks: loading and parsing happen
/// elsewhere, and changed() tells when there is something new to see.
class EventStore : public QObject
{
    Q_OBJECT

public:
    using AccessAnswer = std::function<void(bool granted)>;

    using QObject::QObject;

    /// Computed from cached state; cheap enough to be asked every second.
    virtual AuthorizationStatus authorizationStatus() const = 0;

    /// Asks for full access. `answer` is called later on the main thread, once.
    virtual void requestFullAccess(AccessAnswer answer) = 0;

    /// The event calendars, in the store's order, each with an identifier that stays between starts.
    virtual std::vector<CalendarInfo> calendars() const = 0;

    /// The occurrences that overlap [from, to), without the colours of their calendars: those that start
    /// before `to` and end after `from`, and those without length that start inside. `calendarIDs` restricts
    /// them to these calendars; absent means all. An interval outside of what is loaded is answered from what
    /// is there, and is loaded in the background.
    virtual Meetings meetings(Timestamp from, Timestamp to,
                              const std::optional<std::set<std::string>> &calendarIDs) = 0;

    /// Whether the first load is finished.
    virtual bool isLoaded() const = 0;

    /// The zone in which floating times and whole days are meant, from now on.
    virtual void setTimeZone(const QTimeZone &zone) = 0;

Q_SIGNALS:
    /// Calendars, meetings or the authorization are not what they were: once per burst of changes.
    void changed();
};

} // namespace mivora
