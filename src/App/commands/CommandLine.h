#pragma once

#include "Calendar/CalendarSubscriptions.h"
#include "Meetings/Timestamp.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

/// What the user asked for on the command line.
namespace mivora {

/// Who starts the program. The session bus starts it in order to activate it right afterwards.
enum class StartedBy { user, sessionBus, login };

/// `mivora`: start, or bring the running one's settings up. `mivora --service`: start for the session bus.
/// `mivora --at-login`: start quietly, by way of systemd where it runs the session. `mivora webcal://…`: as
/// desktops open such links.
struct StartRequest
{
    StartedBy startedBy = StartedBy::user;
    /// To a calendar, which the user is asked about.
    QString link{};
};

/// `mivora agenda` and `mivora events`
struct AgendaRequest
{
    bool json = false;
    /// Print again whenever something changes, one line each.
    bool follow = false;
    /// Show the meetings that the settings leave out as well.
    bool all = false;
    /// Print what happens to meetings instead.
    bool events = false;
    /// The time to show; the clock's when absent.
    std::optional<Timestamp> at;
    /// Calendar folders to read in place of the user's own.
    std::vector<std::string> calendars;
};

/// `mivora detect`
struct DetectRequest
{
    bool json = false;
    std::optional<std::string> url;
    std::optional<std::string> location;
    std::optional<std::string> notes;
};

/// `mivora join`, `snooze`, `dismiss`, `copy`, `show`, `quit`, `settings [PAGE]` and `title ACTION`: for the
/// running program.
struct RemoteRequest
{
    std::string action;
    /// The settings page, empty for the one last shown, or what becomes of titles.
    std::string argument;
};

/// `mivora defaults`
struct DefaultsRequest
{
    enum class Action { list, read, write, remove };
    Action action = Action::list;
    std::string key;
    std::string value;
};

/// `mivora access`
struct AccessRequest
{
    enum class Action { status, allow, reset };
    Action action = Action::status;
};

/// `mivora calendars`; an address to add is read from standard input when it is empty.
using CalendarsRequest = SubscriptionRequest;

/// Nothing more to do than to print `text` (help, version) or to complain of it (bad arguments).
struct FinishedRequest
{
    std::string text;
    int exitStatus = 0;
};

using Request = std::variant<StartRequest, AgendaRequest, DetectRequest, RemoteRequest, DefaultsRequest,
                             AccessRequest, CalendarsRequest, FinishedRequest>;

/// Reads the arguments. Bad ones give a FinishedRequest that names the argument and what was expected, with
/// exit status 2.
Request parseCommandLine(int argc, const char *const *argv);

/// Exit statuses of the program.
inline constexpr int exitDone = 0;
inline constexpr int exitCouldNot = 1;
inline constexpr int exitBadArguments = 2;

} // namespace mivora
