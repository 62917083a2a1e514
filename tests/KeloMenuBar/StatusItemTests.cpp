#include "FakeHost.h"
#include "KeloMenuBar/StatusItemController.h"
#include "support/SharedViews.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <gmock/gmock.h>
#include <optional>

using namespace kelo;

namespace {

class StatusItemTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!support::PrivateBus::isInstalled())
            GTEST_SKIP() << "dbus-daemon is not installed";
        m_bus.emplace();
    }

    void TearDown() override { qunsetenv("MIVORA_TRAY"); }

    std::unique_ptr<StatusItemController> makeItem()
    {
        const auto build = [this](Menu &menu) {
            const int opening = ++m_openings;
            menu.addItem(QStringLiteral("Opening %1").arg(opening), {},
                         [this, opening] { m_chosen << opening; });
            menu.addSeparator();
        };
        return std::make_unique<StatusItemController>(
            QStringLiteral("calendar.badge.clock"), QStringLiteral("Mivora"), build,
            QStringLiteral("app.kelo.Mivora"), mivora::sharedViews(), m_bus->connection());
    }

    static bool isShown(const FakeHost &host)
    {
        return waitFor([&] { return !host.registered.isEmpty(); });
    }

    // Lets everything that is under way arrive.
    void settle(FakeHost &host) { host.property("Title"); }

    std::optional<support::PrivateBus> m_bus;
    int m_openings = 0;
    QList<int> m_chosen;
};

} // namespace

TEST_F(StatusItemTest, runsWhatIsChosenAlsoFromTheOpeningBefore)
{
    FakeHost host(*m_bus);
    const auto item = makeItem();
    ASSERT_TRUE(isShown(host));
    const int before = host.open().children[0].id;
    const int opening = m_openings;
    const DBusMenuLayout now = host.open().children[0];
    EXPECT_NE(now.id, before);
    host.click(before);
    EXPECT_TRUE(waitFor([&] { return m_chosen == QList<int>{opening}; }));

    const QDBusMessage group =
        host.menu("GetGroupProperties", {QVariant::fromValue(QList<int>{now.id}), QStringList()});
    const auto properties = qdbus_cast<QList<DBusMenuProperties>>(group.arguments().value(0));
    ASSERT_EQ(properties.size(), 1);
    EXPECT_EQ(properties[0].properties, now.properties);

    const QVariantList events{QVariant::fromValue(
        QList<DBusMenuEvent>{{12345, QStringLiteral("clicked"), QDBusVariant(QString()), 0}})};
    const QDBusMessage reply = host.menu("EventGroup", events);
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>{12345});
    EXPECT_EQ(host.menu("GetLayout", {12345, -1, QStringList()}).type(), QDBusMessage::ErrorMessage);
}

TEST_F(StatusItemTest, announcesOnlyWhatHasChanged)
{
    qputenv("MIVORA_TRAY", "label");
    FakeHost host(*m_bus);
    const auto item = makeItem();
    ASSERT_TRUE(isShown(host));
    settle(host);

    StatusItemState state = item->item().state();

    const struct
    {
        const char *name;
        std::function<void()> change;
        QStringList expected;
    } rows[] = {
        {"title",
         [&] { state.title = QStringLiteral("Review · 2m"); },
         {QStringLiteral("NewTitle"), QStringLiteral("XAyatanaNewLabel")}},
        {"same title", [&] { state.title = QStringLiteral("Review · 2m"); }, {}},
        {"there and back",
         [&] {
             state.isUrgent = true;
             item->item().setState(state);
             state.isUrgent = false;
         },
         {}},
        {"urgent", [&] { state.isUrgent = true; }, {QStringLiteral("NewIcon")}},
        {"countdown, which a label does not show", [&] { state.countdown = QStringLiteral("2m"); }, {}},
        {"tool tip", [&] { state.toolTip = QStringLiteral("Access?"); }, {QStringLiteral("NewToolTip")}},
    };

    const auto takeSignals = [&] {
        QCoreApplication::processEvents();
        settle(host);
        return std::exchange(host.signalNames, {});
    };
    takeSignals();
    for (const auto &row : rows) {
        row.change();
        item->item().setState(state);
        EXPECT_EQ(takeSignals(), row.expected) << row.name;
    }
    item->setVisible(false);
    EXPECT_FALSE(item->isVisible());
    EXPECT_EQ(takeSignals(), QStringList{QStringLiteral("NewStatus")});
    EXPECT_EQ(host.property("Status"), QStringLiteral("Passive"));
}

TEST_F(StatusItemTest, givesPicturesInNetworkByteOrder)
{
    qputenv("MIVORA_TRAY", "wide");
    FakeHost host(*m_bus);
    const auto item = makeItem();
    item->item().setState({.title = QStringLiteral("Review · 2m")});
    ASSERT_TRUE(isShown(host));
    const auto pixmaps = qdbus_cast<QList<NotifierPixmap>>(host.property("IconPixmap"));
    ASSERT_EQ(pixmaps.size(), 2);
    for (const NotifierPixmap &pixmap : pixmaps) {
        EXPECT_EQ(pixmap.bytes.size(), pixmap.width * pixmap.height * 4);
        EXPECT_GT(pixmap.width, 3 * pixmap.height);
        // The middle of the left edge is plate: opaque and dark, alpha first.
        const char *pixel =
            pixmap.bytes.constData() + static_cast<qsizetype>(pixmap.height / 2) * pixmap.width * 4;
        EXPECT_EQ(static_cast<uchar>(pixel[0]), 255);
        EXPECT_LT(static_cast<uchar>(pixel[1]), 64);
    }
    EXPECT_TRUE(host.property("IconName").toString().isEmpty());
}
