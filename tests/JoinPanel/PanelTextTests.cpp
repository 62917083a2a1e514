#include "JoinPanel/PanelText.h"

#include "support/MeetingFactory.h"

#include <gtest/gtest.h>
#include <limits>

namespace mivora {

TEST(PanelText, tellsWhenTheMeetingStartsOrStarted)
{
    const struct
    {
        double left;
        const char *text;
        bool hasStarted;
    } rows[] = {
        {3901, "Starts in 1h 6m", false},
        {3601, "Starts in 1h 1m", false},
        {3600, "Starts in 1h", false},
        {3540.5, "Starts in 1h", false},
        {61, "Starts in 2m", false},
        {60, "Starts in 1m", false},
        {59.999, "Starting now", false},
        {0.5, "Starting now", false},
        {0, "Starting now", true},
        {-59.999, "Starting now", true},
        {-60, "Started 1m ago", true},
        {-119.5, "Started 1m ago", true},
        {-120, "Started 2m ago", true},
        {-4500, "Started 75m ago", true},
        {-6e14, "Started 10000000000000m ago", true},
    };

    const Timestamp start{};
    for (const auto &row : rows) {
        const PanelText text = panelText(makeMeeting("M", start), start - Seconds(row.left));
        EXPECT_EQ(text.timeText.toStdString(), row.text);
        EXPECT_EQ(text.hasStarted, row.hasStarted) << row.left;
    }
    const Timestamp never{Seconds(std::numeric_limits<double>::quiet_NaN())};
    EXPECT_EQ(panelTimeText(never, start), QStringLiteral("Starting now"));
}

TEST(PanelText, namesTheServiceOfTheLink)
{
    const struct
    {
        Service service;
        const char *name;
    } rows[] = {
        {Service::zoom, "Zoom"},   {Service::meet, "Google Meet"},  {Service::teams, "Teams"},
        {Service::webex, "Webex"}, {Service::facetime, "FaceTime"}, {Service::other, "Link"},
    };

    for (const auto &row : rows) {
        EXPECT_EQ(panelText(withLink(makeMeeting("M", ten), row.service), ten).serviceName,
                  QLatin1String(row.name));
    }
    EXPECT_FALSE(panelText(makeMeeting("M", ten), ten).serviceName);
    EXPECT_EQ(panelText(std::nullopt, ten), PanelText());
}

} // namespace mivora
