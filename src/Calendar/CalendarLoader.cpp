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

/// The answer of the first attendee who is the user.
Participation ownParticipation(const std::vector<ical::Attendee> &attendees,
                               const std::vector<std::string> &ownAddresses)
{
    const auto isUser = [&](const ical::Attendee &attendee) {
        return std::any_of(ownAddresses.begin(), ownAddresses.end(), [&](const std::string &own) {
            return !own.empty() && (own == attendee.address || own == attendee.email);
        });
    };
    const auto user = std::find_if(attendees.begin(), attendees.end(), isUser);
    return user == attendees.end() ? Participation::unknown : user->answer;
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
    return std::make_shared<const Meeting>(
        Meeting::fromSnapshot({.eventIdentifier = std::move(occurrence.uid),
                               .title = std::move(occurrence.title),
                               .start = occurrence.start,
                               .end = occurrence.end,
                               .calendarID = calendarID,
                               .isAllDay = occurrence.isAllDay,
                               .participation = ownParticipation(occurrence.attendees, ownAddresses),
                               .attendeeCount = std::int64_t(occurrence.attendees.size()),
                               .url = std::move(occurrence.url),
                               .location = std::move(occurrence.location),
                               .notes = std::move(occurrence.notes)}));
}

} // namespace mivora
