#include "KeloMenuBar/backends/Presentation.h"

#include <gtest/gtest.h>

using namespace kelo;

TEST(Presentation, followsTheHost)
{
    using enum Presentation;

    const struct
    {
        const char *process;
        bool hasAyatanaIndicator;
        const char *desktop;
        Presentation expected;
    } rows[] = {
        {"gnome-shell", false, "", Label},
        {"waybar", false, "", Wide},
        {"waybar", true, "", Wide},
        // A plug-in of a panel for Ayatana's service.
        {"stranger", true, "", Label},
        {"stranger", false, "GNOME", Square},
        // In a sandbox the desktop is all that is known.
        {"", false, "ubuntu:GNOME", Label},
        {"", false, "", Square},
    };

    for (const auto &[process, hasAyatanaIndicator, desktop, expected] : rows)
        EXPECT_EQ(presentationFor({QLatin1String(process), hasAyatanaIndicator, QLatin1String(desktop)}),
                  expected)
            << process << ' ' << desktop;
    EXPECT_TRUE(opensRefusedMenu({.process = QStringLiteral("kded5")}));
    EXPECT_FALSE(opensRefusedMenu({.process = QStringLiteral("waybar")}));
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
