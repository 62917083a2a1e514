#pragma once

#include "Meetings/Color.h"
#include "Meetings/JoinLink.h"
#include "Meetings/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mivora {

/// The user's own answer to an invitation.
enum class Participation { accepted, tentative, declined, unknown };

/// "accepted", "tentative", "declined" or "unknown".
std::string_view participationName(Participation participation);

/// A copy of one occurrence of a calendar event, independent of the store it came from.
struct EventSnapshot
{
    std::optional<std::string> eventIdentifier{};
    std::optional<std::string> title{};
    Timestamp start{};
    Timestamp end{};
    std::string calendarID{};
    std::optional<Color> calendarColor{};
    bool isAllDay = false;
    Participation participation = Participation::unknown;
    bool isInvitation = false;
    bool hasOthers = false;
    std::int64_t attendeeCount = 0;
    std::optional<std::string> url{};
    std::optional<std::string> location{};
    std::optional<std::string> notes{};
};

/// One occurrence of a calendar event as the user sees it.
struct Meeting
{
    /// Identifies one exact occurrence: the event's identifier, "@" and the start in whole seconds since
    /// 1970. Occurrences of a repeating event differ in it, and a moved event gets a new one.
    std::string id{};
    /// Never empty: "Untitled" stands for a missing title. One beyond longestText is cut.
    std::string title{};
    Timestamp start{};
    Timestamp end{};
    std::string calendarID{};
    std::optional<Color> calendarColor{};
    bool isAllDay = false;
    Participation participation = Participation::unknown;
    /// The user is among the attendees, and somebody else has invited them.
    bool isInvitation = false;
    /// Somebody takes part who is not known to be the user; rooms and devices don't count.
    bool hasOthers = false;
    std::int64_t attendeeCount = 0;
    std::optional<JoinLink> joinLink{};

    friend bool operator==(const Meeting &, const Meeting &) = default;

    /// Makes the meeting of `snapshot` and looks for its join link. A start that no 64-bit count of seconds
    /// can hold stops the program.
    static Meeting fromSnapshot(const EventSnapshot &snapshot);

    /// Whether the meeting has begun and not yet ended at `now`.
    bool isRunning(Timestamp now) const { return start <= now && now < end; }
};

} // namespace mivora
