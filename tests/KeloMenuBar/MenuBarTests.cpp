#include "KeloMenuBar/MainMenu.h"
#include "KeloMenuBar/backends/DBusMenu.h"
#include "KeloMenuBar/backends/Presentation.h"

#include <QTest>
#include <QWindow>
#include <climits>
#include <gmock/gmock.h>

using namespace kelo;

TEST(MainMenu, closesWindowsThatHaveAFrame)
{
    QObject application;
    MainMenu::build({}).install(application);
    QWindow panel;
    panel.setFlag(Qt::FramelessWindowHint);
    QWindow window;
    for (QWindow *each : {&panel, &window}) {
        each->show();
        each->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(each));
        QTest::keyClick(each, Qt::Key_W, Qt::ControlModifier);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.isVisible(); }));
    EXPECT_TRUE(panel.isVisible());
}

TEST(DBusMenu, leavesOutPropertiesThatAreTheDefault)
{
    const auto text = [](const MenuItem &item) {
        QStringList parts;
        const QVariantMap properties = dbusMenuProperties(item);
        for (auto property = properties.begin(); property != properties.end(); ++property) {
            QString value = property->toString();
            for (const QStringList &keys : property->value<QList<QStringList>>())
                value = keys.join(u'+');
            parts << property.key() + u'=' + value;
        }
        return parts.join(u' ');
    };

    const std::pair<MenuItem, const char *> rows[] = {
        {{.title = QStringLiteral("Open")}, "label=Open"},
        {{.title = QStringLiteral("not_access__keys")}, "label=not__access____keys"},
        // The time stays in front of a title in Arabic.
        {{.title = QStringLiteral("09:05  اجتماع  · Zoom")}, "label=\u200E09:05  اجتماع  · Zoom"},
        {{.isEnabled = false}, "enabled=false label="},
        {{.isSeparator = true}, "type=separator"},
        {{.keyEquivalent = QStringLiteral("q")}, "label= shortcut=Control+q"},
        {{.keyEquivalent = QStringLiteral(",")}, "label= shortcut=Control+comma"},
        {{.keyEquivalent = QStringLiteral("z"), .modifiers = KeyModifiers::CommandShift},
         "label= shortcut=Control+Shift+z"},
    };

    for (const auto &[item, expected] : rows)
        EXPECT_EQ(text(item).toStdString(), expected);
}

TEST(DBusMenu, keepsThreeOpeningsWithNumbersOfTheirOwn)
{
    std::vector<int> chosen;
    const auto build = [&chosen, opening = 0]() mutable {
        Menu menu;
        menu.addItem(QStringLiteral("on"), {}, [&chosen, now = ++opening] { chosen.push_back(now); });
        menu.addItem(QStringLiteral("off"), {}, [&chosen] { chosen.push_back(0); }).isEnabled = false;
        return menu;
    };
    QObject exported;
    DBusMenu menu(
        QDBusConnection(QStringLiteral("none")), build, [] { return QByteArray(); }, &exported);
    const auto layout = [&menu](int id, int depth) {
        DBusMenuLayout layout;
        const uint revision = menu.GetLayout(id, depth, {}, QDBusMessage(), layout);
        return std::pair(revision, layout.children);
    };
    // Before anybody opens it.
    EXPECT_EQ(menu.GetProperty(2, QStringLiteral("enabled"), QDBusMessage()).variant(), false);
    EXPECT_EQ(menu.AboutToShow(1), false);
    EXPECT_EQ(menu.AboutToShow(0), true);
    QList<int> unknown;
    EXPECT_EQ(menu.AboutToShowGroup({0, 3, 5}, unknown), QList<int>{0});
    EXPECT_EQ(unknown, QList<int>{5});
    EXPECT_EQ(menu.AboutToShowGroup({3}, unknown), QList<int>{});
    EXPECT_EQ(menu.AboutToShow(0), true);

    const auto [revision, items] = layout(0, -1);
    EXPECT_EQ(revision, 4U);
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0].id, 7);
    EXPECT_EQ(items[1].id, 8);
    EXPECT_EQ(layout(0, 0).second.size() + layout(7, -1).second.size(), 0);
    const auto group = [&menu](const QList<int> &ids) {
        QString text;
        for (const DBusMenuProperties &item : menu.GetGroupProperties(ids, {}))
            text += QStringLiteral("%1 %2|").arg(item.id).arg(
                item.properties[QStringLiteral("label")].toString());
        return text.toStdString();
    };
    EXPECT_EQ(group({}), "7 on|8 off|");
    EXPECT_EQ(group({8, 6, 9, 0}), "8 off|0 |") << "only the current ones are told";

    QList<DBusMenuEvent> events{{7, QStringLiteral("opened"), QDBusVariant(QString()), 0}};
    for (const int id : {INT_MIN, -1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, INT_MAX})
        events << DBusMenuEvent{id, QStringLiteral("clicked"), QDBusVariant(QString()), 0};
    EXPECT_EQ(menu.EventGroup(events), (QList<int>{INT_MIN, -1, 1, 2, 9, INT_MAX}));
    EXPECT_THAT(chosen, testing::IsEmpty()) << "the host has its answer first";
    QCoreApplication::processEvents();
    EXPECT_THAT(chosen, testing::ElementsAre(2, 3, 4));
}

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
        {"waybar", true, "", Wide},
        // A plug-in of a panel for Ayatana's service.
        {"stranger", true, "", Label},
        {"stranger", false, "GNOME", Square},
        {"sfwbar", false, "", Label},
        // In a sandbox the desktop is all that is known.
        {"", false, "ubuntu:GNOME", Label},
        {"", false, "", Square},
    };

    for (const auto &[process, hasAyatanaIndicator, desktop, expected] : rows)
        EXPECT_EQ(presentationFor({.process = QLatin1String(process),
                                   .hasAyatanaIndicator = hasAyatanaIndicator,
                                   .desktop = QLatin1String(desktop)}),
                  expected)
            << process << ' ' << desktop;
    const StatusHost beside{.process = QStringLiteral("swaybar"),
                            .others = {QStringLiteral("swaybar"), QStringLiteral("waybar")}};
    EXPECT_EQ(presentationFor(beside), Wide) << "sway's own bar keeps the list";
    EXPECT_TRUE(readsMarkup(beside));
    EXPECT_FALSE(readsMarkup({.process = QStringLiteral("gnome-shell")}));
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
    const auto text = [&](Presentation presentation) {
        const NotifierProperties shown = notifierProperties(state, presentation);
        QStringList parts{shown.title, shown.label, shown.labelGuide, shown.iconName};
        if (shown.picture)
            parts << shown.picture->text
                  << QString(QLatin1String(shown.picture->isUrgent ? "urgent" : "calm"));
        return parts.join(u'|').toStdString();
    };
    EXPECT_EQ(text(Presentation::Label),
              "Review · 12m|Review · 12m|Review · 00m|app.kelo.Mivora-clock-urgent");
    EXPECT_EQ(text(Presentation::Wide), "Review · 12m||||Review · 12m|urgent")
        << "the host would prefer an icon's name to the picture";
    EXPECT_EQ(text(Presentation::Square), "Review · 12m||||12m|urgent");
}
