#include "JoinPanel/JoinPanelModel.h"

#include "support/MeetingFactory.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace mivora {

TEST(JoinPanelModel, tellsWhenTheMeetingStartsOrStartedAndAnnouncesItOnce)
{
    const struct
    {
        double left;
        const char *text;
        bool hasStarted;
        bool isAnnounced;
    } rows[] = {
        {3901, "Starts in 1h 6m", false, true},  {3600, "Starts in 1h", false, true},
        {3540.5, "Starts in 1h", false, false},  {61, "Starts in 2m", false, true},
        {60, "Starts in 1m", false, true},       {59.999, "Starting now", false, true},
        {0.5, "Starting now", false, false},     {0, "Starting now", true, true},
        {-59.999, "Starting now", true, false},  {-60, "Started 1m ago", true, true},
        {-119.5, "Started 1m ago", true, false}, {-4500, "Started 75m ago", true, true},
    };

    JoinPanelModel model(ten - Seconds(9999));
    model.setMeeting(makeMeeting("Stand\nup", ten));
    EXPECT_EQ(model.title(), QStringLiteral("Stand up"));
    for (const auto &row : rows) {
        const QSignalSpy changed(&model, &JoinPanelModel::changed);
        model.setNow(ten - Seconds(row.left));
        EXPECT_EQ(model.timeText().toStdString(), row.text);
        EXPECT_EQ(model.hasStarted(), row.hasStarted) << row.left;
        EXPECT_EQ(changed.count(), row.isAnnounced ? 1 : 0) << row.left;
    }
}

TEST(JoinPanelModel, showsServiceAndColour)
{
    JoinPanelModel model(ten);
    Meeting meeting = withLink(makeMeeting("M", ten), Service::meet);
    meeting.calendarColor = Color{1, 2, 3};
    const QSignalSpy changed(&model, &JoinPanelModel::changed);
    model.setMeeting(meeting);
    EXPECT_TRUE(model.hasLink());
    EXPECT_EQ(model.serviceName(), QStringLiteral("Google Meet"));
    EXPECT_EQ(model.accentColor(), QStringLiteral("#010203"));
    meeting.attendeeCount = 5;
    model.setMeeting(meeting);
    EXPECT_EQ(changed.count(), 1) << "nothing of it is shown";
    EXPECT_EQ(model.meeting(), meeting);
    model.setMeeting(makeMeeting("M", ten));
    EXPECT_FALSE(model.hasLink());
    EXPECT_EQ(model.serviceName() + model.accentColor(), QString());
    EXPECT_EQ(changed.count(), 2);
}

} // namespace mivora
