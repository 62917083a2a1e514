#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <vector>

namespace mivora {

/// Why a calendar can't be subscribed to, or can't be fetched.
enum class SubscriptionFault {
    none,
    /// The text is no address that a calendar could be fetched from.
    noAddress,
    /// The desktop has no store of calendars, or the part of this program that talks to it is missing.
    noStore,
    /// The store is there but doesn't answer.
    storeSilent,
    /// There is no subscription with this identifier that would be ours.
    unknownCalendar,
    notFound,
    needsPassword,
    notACalendar,
    badCertificate,
    /// No network, no such host, or nobody there who answers.
    unreachable,
    /// The host was reached, and takes too long.
    slow,
    /// The host answers with a failure of its own.
    refused,
    /// None of these: there is so much of it that it is still being read.
    unfinished,
};

/// A calendar that this program had the desktop's store subscribe to. Its address is a secret of the store's:
/// only the host is told.
struct SubscribedCalendar
{
    /// As `CalendarInfo` has it.
    std::string id;
    std::string name;
    std::string host;
    /// "#rrggbb"
    std::string color;
    /// Of this week: neither all-day events nor declined ones.
    std::size_t meetings = 0;
    /// How the last attempt to fetch it went.
    SubscriptionFault fault = SubscriptionFault::none;
};

struct SubscriptionRequest
{
    enum class Action {
        /// Has the store fetch the calendar `id`, or all when that is empty, and tells of them.
        fetch,
        /// Subscribes to `address`, and keeps it when it can be fetched. Without a `name` the host's is
        /// taken.
        add,
        rename,
        remove,
    };

    Action action = Action::fetch;
    std::string id{};
    std::string address{};
    std::string name{};
};

struct SubscriptionAnswer
{
    /// Of the request as a whole.
    SubscriptionFault fault = SubscriptionFault::none;
    /// Those that were fetched or added, sorted by name.
    std::vector<SubscribedCalendar> calendars{};
};

/// Whether `link` says by its scheme that it leads to a calendar.
bool isCalendarLink(const QString &link);

/// What stands for the address `text` in a question or a message: its host; empty when it is no address that
/// can be subscribed to.
std::string hostOf(const std::string &text);

/// Where the calendar at `text` is to be looked for, in this order. `https:` is taken as it is. `webcal:` and
/// `http:` say nothing of whether the host can do better than plain text: that is tried first, except on this
/// machine itself. Empty when `text` is no such address.
std::vector<std::string> addressesToTry(const std::string &text);

} // namespace mivora
