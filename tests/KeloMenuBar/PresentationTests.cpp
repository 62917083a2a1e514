#include "KeloMenuBar/backends/Presentation.h"

#include <gtest/gtest.h>

using namespace kelo;

TEST(Presentation, followsTheHost)
{
    struct Case
    {
        const char *name;
        StatusHost host;
        Presentation expected;
    };

    const Case cases[] = {
        {"shell", {.process = QStringLiteral("gnome-shell")}, Presentation::Label},
        {"waybar", {.process = QStringLiteral("waybar")}, Presentation::Wide},
        {"Ayatana's service is not waybar's concern",
         {.process = QStringLiteral("waybar"), .hasAyatanaIndicator = true},
         Presentation::Wide},
        {"plug-in of a panel with Ayatana's service",
         {.process = QStringLiteral("stranger"), .hasAyatanaIndicator = true},
         Presentation::Label},
        {"stranger", {.process = QStringLiteral("stranger")}, Presentation::Square},
        {"a stranger's desktop does not matter",
         {.process = QStringLiteral("stranger"), .desktop = QStringLiteral("GNOME")},
         Presentation::Square},
        {"sandbox", {.desktop = QStringLiteral("ubuntu:GNOME")}, Presentation::Label},
        {"nothing known", {}, Presentation::Square},
    };
    for (const Case &test : cases)
        EXPECT_EQ(presentationFor(test.host), test.expected) << test.name;
}

TEST(NotifierProperties, eachPresentationGivesTheHostOneThingToDraw)
{
    const StatusItemState state{.title = QStringLiteral(" Review · 12m"),
                                .countdown = QStringLiteral("12m"),
                                .isUrgent = true,
                                .icon = QStringLiteral("calendar.badge.clock"),
                                .accessibilityDescription = QStringLiteral("Mivora")};
    const NotifierProperties label = notifierProperties(state, Presentation::Label);
    EXPECT_EQ(label.label, QStringLiteral("Review · 12m"));
    EXPECT_EQ(label.labelGuide, QStringLiteral("Review · 00m"));
    EXPECT_EQ(label.iconName, QStringLiteral("app.kelo.Mivora-clock-urgent"));
    EXPECT_FALSE(label.picture);

    const NotifierProperties wide = notifierProperties(state, Presentation::Wide);
    EXPECT_TRUE(wide.iconName.isEmpty()) << "the host would prefer it to the picture";
    EXPECT_TRUE(wide.label.isEmpty());
    EXPECT_EQ(wide.picture->text, QStringLiteral("Review · 12m"));

    const NotifierProperties square = notifierProperties(state, Presentation::Square);
    EXPECT_EQ(square.picture->text, QStringLiteral("12m"));
    EXPECT_EQ(square.title, QStringLiteral("Review · 12m"));
    EXPECT_TRUE(square.picture->isUrgent);
}
