#pragma once

#include <cstddef>
#include <functional>
#include <memory>
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

/// Subscribes to calendars through the desktop's own store, which fetches them, again and again, and keeps
/// them: this program has no network. Main thread only; nothing blocks, and nothing is loaded before the
/// first request.
class CalendarSubscriptions
{
public:
    using Answered = std::function<void(const SubscriptionAnswer &answer)>;

    /// A request on its way. Deleting it forgets the answer; a calendar that was being added goes again.
    class Job
    {
    public:
        virtual ~Job() = default;
    };

    virtual ~CalendarSubscriptions() = default;

    /// `answered` is called once, later, within a minute; it may delete the job.
    virtual std::unique_ptr<Job> perform(const SubscriptionRequest &request, Answered answered) = 0;

    /// Whether the calendar is one that this program subscribed to, and may rename and remove.
    virtual bool isOwn(const std::string &calendarID) const = 0;
};

/// What stands for the address `text` in a question or a message: its host; empty when it is no address that
/// can be subscribed to.
std::string hostOf(const std::string &text);

/// Where the calendar at `text` is to be looked for, in this order. `https:` is taken as it is. `webcal:` and
/// `http:` say nothing of whether the host can do better than plain text: that is tried first, except on this
/// machine itself. Empty when `text` is no such address.
std::vector<std::string> addressesToTry(const std::string &text);

} // namespace mivora
