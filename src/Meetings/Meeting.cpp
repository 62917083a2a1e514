#include "Meetings/Meeting.h"

#include "Meetings/BoundedText.h"
#include "Meetings/JoinLinkDetector.h"
#include "Meetings/WhiteSpace.h"

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace mivora {

namespace {

/// The seconds since 1970 without their fraction. A start beyond 64 bits is a broken calendar store, and
/// every answer to it would be a wrong identity.
std::int64_t wholeSeconds(Timestamp start)
{
    const double seconds = secondsSinceEpoch(start);
    // 2^63 is a double, the largest 64-bit integer is not. Not a number fails both comparisons.
    constexpr double limit = 0x1p63;
    if (!(seconds >= -limit && seconds < limit)) {
        std::fprintf(stderr, "mivora: an event starts at %g seconds since 1970, which is no date\n", seconds);
        std::abort();
    }
    return std::int64_t(seconds);
}

/// No real identifier is half as long; of one that is, the beginning and a checksum stand for all.
std::string boundedIdentifier(const std::string &identifier)
{
    constexpr std::size_t longestIdentifier = 1024;
    if (identifier.size() <= longestIdentifier)
        return identifier;
    std::string bounded(prefix(identifier, longestIdentifier));
    bounded += '#';
    bounded += std::to_string(std::hash<std::string>()(identifier));
    return bounded;
}

std::string meetingID(const EventSnapshot &snapshot)
{
    return boundedIdentifier(snapshot.eventIdentifier.value_or("")) + '@' +
           std::to_string(wholeSeconds(snapshot.start));
}

std::string meetingTitle(const EventSnapshot &snapshot)
{
    const std::string_view title = snapshot.title ? trimmed(*snapshot.title) : std::string_view();
    return boundedText(title.empty() ? "Untitled" : title);
}

} // namespace

std::string_view participationName(Participation participation)
{
    constexpr std::string_view names[] = {"accepted", "tentative", "declined", "unknown"};
    return names[std::size_t(participation)];
}

Meeting Meeting::fromSnapshot(const EventSnapshot &snapshot)
{
    return {
        .id = meetingID(snapshot),
        .title = meetingTitle(snapshot),
        .start = snapshot.start,
        .end = snapshot.end,
        .calendarID = snapshot.calendarID,
        .calendarColor = snapshot.calendarColor,
        .isAllDay = snapshot.isAllDay,
        .participation = snapshot.participation,
        .isInvitation = snapshot.isInvitation,
        .hasOthers = snapshot.hasOthers,
        .attendeeCount = snapshot.attendeeCount,
        .joinLink = detect(snapshot.url, snapshot.location, snapshot.notes),
    };
}

} // namespace mivora
