#include "StatusBar/StatusText.h"

#include "MeetingTexts/MeetingTexts.h"
#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

const Meeting review = makeMeeting("Design review", ten);

} // namespace

TEST(StatusItemState, countsDownAndTurnsUrgent)
{
    const struct
    {
        Seconds left;
        const char *title;
        bool urgent;
        const char *inIcon;
    } rows[] = {
        {Seconds(5341), " Design review · 1h 30m", false, "2h"},
        {Seconds(5340), " Design review · 1h 29m", false, "1h"},
        {Seconds(3600), " Design review · 1h", false, "1h"},
        {Seconds(60), " Design review · 1m", true, "1m"},
        {Seconds(59.5), " Design review · now", true, "now"},
        {Seconds(-1799.5), " Design review · now", true, "now"},
        {Seconds(-1800), " Design review · now", false, "now"},
    };

    for (const auto &row : rows) {
        const auto state = statusItemState(review, {}, CalendarAuthorization::granted, ten - row.left);
        EXPECT_EQ(state.title.toStdString(), row.title);
        EXPECT_EQ(state.urgent, row.urgent) << row.title;
        EXPECT_EQ(shortCountdownText(row.left).toStdString(), row.inIcon) << row.title;
    }
}

TEST(StatusItemState, cutsTheTitleAlone)
{
    const struct
    {
        const char *meetingTitle;
        int width;
        const char *title;
    } rows[] = {
        {"Weekly sync", 8, " Weekly… · 5m"},
        {"Weekly\r\nsync", 11, " Weekly sync · 5m"},
    };

    for (const auto &row : rows) {
        const Meeting meeting = makeMeeting(row.meetingTitle, ten);
        const auto state = statusItemState(meeting, {.width = row.width}, CalendarAuthorization::granted,
                                           ten - Seconds(300));
        EXPECT_EQ(state.title.toStdString(), row.title) << row.width;
    }
}

TEST(StatusItemState, isTheIconAloneWithoutMeetingOrWish)
{
    const QString clock = QStringLiteral("calendar.badge.clock");
    const QString warning = QStringLiteral("calendar.badge.exclamationmark");
    const QString needed = QStringLiteral("Mivora needs Calendar access");

    const struct
    {
        const char *name;
        std::optional<Meeting> next;
        bool isShown;
        CalendarAuthorization authorization;
        StatusItemState state;
    } rows[] = {
        {"no meeting", {}, true, CalendarAuthorization::granted, {{}, false, clock, {}}},
        {"not wanted, though urgent", review, false, CalendarAuthorization::granted, {{}, false, clock, {}}},
        {"denied", {}, true, CalendarAuthorization::denied, {{}, false, warning, needed}},
        {"not asked", {}, true, CalendarAuthorization::notDetermined, {{}, false, warning, needed}},
    };

    for (const auto &row : rows)
        EXPECT_EQ(statusItemState(row.next, {.isShown = row.isShown}, row.authorization, ten), row.state)
            << row.name;
}

} // namespace mivora
