#include "StatusBar/StatusText.h"

#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(StatusText, countsDownAndTurnsUrgent)
{
    const Meeting review = makeMeeting("Design\r\nreview", ten);

    const struct
    {
        Seconds left;
        int width;
        const char *title;
        bool urgent;
    } rows[] = {
        {Seconds(3901), 24, " Design review · 1h 6m", false},
        {Seconds(300), 8, " Design… · 5m", false},
        {Seconds(60.5), 24, " Design review · 2m", false},
        {Seconds(60), 13, " Design review · 1m", true},
        {Seconds(59.5), 1, " … · now", true},
        {Seconds(-1799.5), 24, " Design review · now", true},
        {Seconds(-1800), 24, " Design review · now", false},
    };

    for (const auto &row : rows) {
        const auto text =
            statusText(review, {.width = row.width}, CalendarAuthorization::granted, ten - row.left);
        EXPECT_EQ(text.title.toStdString(), row.title) << row.left.count();
        EXPECT_EQ(text.urgent, row.urgent) << row.left.count();
    }
}

TEST(StatusText, isTheIconAloneWithoutMeetingOrWish)
{
    const StatusText calm{{}, false, QStringLiteral("calendar.badge.clock"), {}};
    const StatusText needy{{},
                           false,
                           QStringLiteral("calendar.badge.exclamationmark"),
                           QStringLiteral("Mivora needs Calendar access")};
    const TitleOptions hidden{.isShown = false};
    EXPECT_EQ(statusText({}, {}, CalendarAuthorization::granted, ten), calm);
    EXPECT_EQ(statusText(makeMeeting("M", ten), hidden, CalendarAuthorization::granted, ten), calm);
    EXPECT_EQ(statusText({}, {}, CalendarAuthorization::denied, ten), needy);
    EXPECT_EQ(statusText({}, {}, CalendarAuthorization::notDetermined, ten), needy);
}

} // namespace mivora
