#include "Onboarding/FirstMeetingModel.h"

#include "FirstRun.h"

#include <QSignalSpy>
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
        {withLink(plain, Service::meet), "10:30 AM · Google Meet", ""},
        {withLink(plain, Service::teams), "10:30 AM · Teams", ""},
        {withLink(plain, Service::webex), "10:30 AM · Webex", ""},
        {withLink(plain, Service::facetime), "10:30 AM · FaceTime", ""},
        {withLink(plain, Service::other), "10:30 AM · Link", ""},
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

TEST(FirstMeetingModel, followsTheScheduler)
{
    FirstRun run(CalendarAuthorization::granted);
    run.scheduler.refresh();
    const FirstMeetingModel model(run.scheduler, [](Timestamp) { return QString(); });
    QSignalSpy changed(&model, &FirstMeetingModel::changed);
    EXPECT_FALSE(model.hasMeeting());
    EXPECT_EQ(model.title() + model.detail() + model.color(), QString());

    run.source.events = {makeMeeting("Standup", at("2026-03-10T11:00:00Z"))};
    run.scheduler.refresh();

    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(model.title(), QStringLiteral("Standup"));
}

} // namespace mivora
