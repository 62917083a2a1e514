#include "Onboarding/FirstMeetingModel.h"

#include "FirstRun.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(FirstMeetingModel, tellsTheNextMeetingAndItsService)
{
    const Meeting plain = makeMeeting("Design\nreview", at("2026-03-10T10:30:00Z"));
    Meeting coloured = plain;
    coloured.calendarColor = Color{226, 120, 40};

    const struct
    {
        Meeting meeting;
        const char *detail;
        const char *color;
    } rows[] = {
        {plain, "10:30 AM · no link", ""},
        {coloured, "10:30 AM · no link", "#e27828"},
        {withLink(plain, Service::zoom), "10:30 AM · Zoom", ""},
    };

    const auto formatTime = [](Timestamp) { return QStringLiteral("10:30 AM"); };

    for (const auto &row : rows) {
        FirstRun run(CalendarAuthorization::granted);
        run.source.events = {row.meeting};
        run.scheduler.refresh();
        const FirstMeetingModel model(run.scheduler, formatTime);
        EXPECT_TRUE(model.hasMeeting());
        EXPECT_EQ(model.title().toStdString(), "Design review");
        EXPECT_EQ(model.detail().toStdString(), row.detail);
        EXPECT_EQ(model.color().toStdString(), row.color) << row.detail;
    }
}

} // namespace mivora
