#include "Calendar/CalendarLoader.h"

#include "Meetings/BoundedText.h"
#include "Platform/SystemLog.h"

#include <QColor>
#include <QRegularExpression>
#include <algorithm>

namespace mivora {

Q_LOGGING_CATEGORY(calendarLog, "mivora.calendar")

namespace {

/// "rgb(53,132,228)" or "rgba(53,132,228,0.5)", as CSS has it.
std::optional<Color> colorFromFunction(const std::string &text)
{
    static const QRegularExpression function(
        QStringLiteral(R"(^\s*rgba?\(\s*(\d{1,3})\s*,\s*(\d{1,3})\s*,\s*(\d{1,3})\s*(,[^)]*)?\)\s*$)"));
    const QRegularExpressionMatch match = function.match(QString::fromStdString(text));
    if (!match.hasMatch())
        return std::nullopt;
    const auto part = [&](int i) { return std::uint8_t(std::min(match.captured(i).toInt(), 255)); };
    return Color{part(1), part(2), part(3)};
}

bool isAnyOf(const std::vector<std::string> &ownAddresses, const ical::Attendee &person)
{
    return std::ranges::any_of(ownAddresses, [&](const std::string &own) {
        return !own.empty() && (own == person.address || own == person.email);
    });
}

/// Whether somebody takes part who isn't the user. Some servers list the organizer among the attendees,
/// others don't; without any attendees it is just where the event was published.
bool hasOthers(const ical::Occurrence &event, const std::vector<std::string> &ownAddresses)
{
    const auto isOther = [&](const ical::Attendee &person) {
        return !person.isResource && !isAnyOf(ownAddresses, person);
    };
    return std::ranges::any_of(event.attendees, isOther) ||
           (!event.attendees.empty() && event.organizer && isOther(*event.organizer));
}

} // namespace

std::string printable(std::string_view text)
{
    constexpr std::size_t longest = 300;
    const std::string_view start = prefix(text, longest);
    return singleLine(QString::fromUtf8(start.data(), qsizetype(start.size()))).toStdString() +
           (start.size() < text.size() ? "..." : "");
}

std::optional<Color> colorFrom(const std::string &text)
{
    if (const std::optional<Color> color = Color::fromHex(text))
        return color;
    if (const std::optional<Color> color = colorFromFunction(text))
        return color;
    // The one name of CSS that Qt, whose table is SVG's, doesn't have.
    const QString name = QString::fromStdString(text);
    const bool isMissing = name.compare(QLatin1String("rebeccapurple"), Qt::CaseInsensitive) == 0;
    const QColor named = isMissing ? QColor(0x66, 0x33, 0x99) : QColor::fromString(name);
    if (!named.isValid() || named.alpha() == 0)
        return std::nullopt;
    return Color{std::uint8_t(named.red()), std::uint8_t(named.green()), std::uint8_t(named.blue())};
}

bool overlaps(Timestamp start, Timestamp end, Timestamp from, Timestamp to)
{
    return start < to && (end > from || (end <= start && start >= from));
}

std::shared_ptr<const Meeting> meetingOf(ical::Occurrence occurrence, const std::string &calendarID,
                                         const std::vector<std::string> &ownAddresses)
{
    const auto isUser = [&](const ical::Attendee &person) { return isAnyOf(ownAddresses, person); };
    const auto user = std::ranges::find_if(occurrence.attendees, isUser);
    const bool isListed = user != occurrence.attendees.end();
    const bool isHost = occurrence.organizer && isUser(*occurrence.organizer);
    return std::make_shared<const Meeting>(
        Meeting::fromSnapshot({.eventIdentifier = std::move(occurrence.uid),
                               .title = std::move(occurrence.title),
                               .start = occurrence.start,
                               .end = occurrence.end,
                               .calendarID = calendarID,
                               .isAllDay = occurrence.isAllDay,
                               .participation = isListed ? user->answer : Participation::unknown,
                               .isInvitation = isListed && !isHost,
                               .hasOthers = hasOthers(occurrence, ownAddresses),
                               .attendeeCount = std::int64_t(occurrence.attendees.size()),
                               .url = std::move(occurrence.url),
                               .location = std::move(occurrence.location),
                               .notes = std::move(occurrence.notes)}));
}

} // namespace mivora
