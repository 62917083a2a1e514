#pragma once

#include "Calendar/CalendarSubscriptions.h"

#include <QtPlugin>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// The seam to the calendars that the desktop itself keeps. What stands behind it hands over iCalendar text
/// and knows nothing of occurrences, so that recurring events are understood in one place for all stores.
namespace mivora {

/// By what a component of a calendar is known (RFC 5545).
struct ObjectName
{
    std::string uid;
    /// The RECURRENCE-ID of a component that overrides one occurrence; empty for the event itself.
    std::string recurrenceID;
};

/// A component of a calendar.
struct CalendarObject
{
    ObjectName name;
    /// A whole VEVENT, with its BEGIN and END, and the end of the last line.
    std::string text;
};

/// A calendar that the user has not switched off on the desktop.
struct DesktopCalendar
{
    /// Stable between starts.
    std::string id;
    std::string title;
    /// The name of the account that holds it; may be empty.
    std::string account;
    /// As iCalendar writes colours: "#rrggbb" or a name of CSS 3; may be empty.
    std::string color;
    /// What the account tells of its owner: e-mail addresses, and user names that are none.
    std::vector<std::string> ownerAddresses;

    friend bool operator==(const DesktopCalendar &, const DesktopCalendar &) = default;
};

struct DesktopAccounts
{
    std::vector<DesktopCalendar> calendars;
    /// The addresses that the user sends mail from.
    std::vector<std::string> mailAddresses;

    friend bool operator==(const DesktopAccounts &, const DesktopAccounts &) = default;
};

/// What the identifiers of subscriptions begin with: by that the program knows its own.
inline constexpr std::string_view subscriptionPrefix = "mivora-";

/// Whether the desktop's calendars can be read.
enum class DesktopAccess {
    granted,
    /// The bus doesn't let this program talk to them.
    refused,
    /// They can't be started.
    unavailable,
};

/// Told of the desktop's calendars, on the thread that called DesktopCalendars::run(). A calendar that the
/// functions name is among those of the last setAccounts().
class DesktopCalendarsReader
{
public:
    virtual ~DesktopCalendarsReader() = default;

    virtual void setAccess(DesktopAccess access) = 0;

    /// All calendars, whenever one of them comes, goes or is another than before.
    virtual void setAccounts(DesktopAccounts accounts) = 0;

    /// The objects of a calendar come anew: those that don't come before finishLoad() are not there any more.
    virtual void startLoad(const std::string &calendarID) = 0;
    virtual void finishLoad(const std::string &calendarID) = 0;

    /// Objects that are new, or not what they were.
    virtual void putObjects(const std::string &calendarID, std::vector<CalendarObject> objects) = 0;

    /// A name without recurrenceID takes the whole event away, with all that overrides it.
    virtual void removeObjects(const std::string &calendarID, const std::vector<ObjectName> &names) = 0;

    /// What a calendar means by a TZID: a whole VTIMEZONE, as above.
    virtual void putTimeZone(const std::string &calendarID, const std::string &id, std::string text) = 0;

    /// All that was told belongs together and can be shown. `hasAll` tells whether every calendar has
    /// answered once, be it with a failure.
    virtual void settle(bool hasAll) = 0;

    /// What a person has to know, for the log.
    virtual void report(const std::string &message) = 0;
};

/// Seconds since 1970.
struct DesktopInterval
{
    double from = 0;
    double to = 0;

    friend bool operator==(const DesktopInterval &, const DesktopInterval &) = default;
};

/// The calendars that the desktop keeps. They come back by themselves when their server died or hung.
class DesktopCalendars
{
public:
    virtual ~DesktopCalendars() = default;

    /// Tells `reader` of all calendars, and of the objects that touch `interval` or recur at all, and then
    /// of their changes until stop() is called. `service` is the name on the session bus.
    virtual void run(const std::string &service, DesktopInterval interval,
                     DesktopCalendarsReader &reader) = 0;

    /// Wants other days; settle() follows in any case. Can be called on any thread.
    virtual void setInterval(DesktopInterval interval) = 0;

    /// Does what `request` asks for, and tells `reader` of the calendars of the answer as run() does: it
    /// settles once when the server has answered, and once at the end. Identifiers are the server's.
    /// `addresses` are those of a calendar to add; the first that somebody answers at is kept, if it is that
    /// of a calendar.
    virtual SubscriptionAnswer perform(const SubscriptionRequest &request,
                                       const std::vector<std::string> &addresses, DesktopInterval interval,
                                       DesktopCalendarsReader &reader) = 0;

    /// Has run() or perform() return soon, also when it has yet to be called. Can be called on any thread.
    virtual void stop() = 0;
};

/// Implemented by the plug-in mivora-eds, so that the program itself need not link Evolution Data Server.
class DesktopCalendarsPlugin
{
public:
    virtual ~DesktopCalendarsPlugin() = default;

    virtual std::unique_ptr<DesktopCalendars> make() = 0;
};

} // namespace mivora

Q_DECLARE_INTERFACE(mivora::DesktopCalendarsPlugin, "app.kelo.DesktopCalendars/2")
