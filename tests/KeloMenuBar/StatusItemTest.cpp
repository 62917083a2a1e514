#include "KeloMenuBar/StatusItem.h"
#include "FakeHost.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <gmock/gmock.h>
#include <optional>

using namespace kelo;

namespace {

const QString symbol = QStringLiteral("calendar.badge.clock");
const QString program = QStringLiteral("app.kelo.Mivora");

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

    std::unique_ptr<StatusItem> makeItem()
    {
        auto item = std::make_unique<StatusItem>(program, m_bus->connection());
        item->setIcon(symbol, QStringLiteral("Mivora"));
        item->menuNeedsUpdate = [this](Menu &menu) {
            const int opening = ++m_openings;
            menu.addItem(QStringLiteral("Opening %1").arg(opening), {},
                         [this, opening] { m_chosen << opening; });
            menu.addSeparator();
        };
        return item;
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

    struct Case
    {
        const char *name;
        std::function<void()> change;
        QStringList expected;
    };

    const Case cases[] = {
        {"title",
         [&] { item->setTitle(QStringLiteral("Review · 2m")); },
         {QStringLiteral("NewTitle"), QStringLiteral("XAyatanaNewLabel")}},
        {"same title", [&] { item->setTitle(QStringLiteral("Review · 2m")); }, {}},
        {"there and back",
         [&] {
             item->setUrgent(true);
             item->setUrgent(false);
         },
         {}},
        {"urgent", [&] { item->setUrgent(true); }, {QStringLiteral("NewIcon")}},
        {"countdown, which a label does not show", [&] { item->setCountdown(QStringLiteral("2m")); }, {}},
        {"tool tip",
         [&] { item->setToolTip(QStringLiteral("Mivora needs Calendar access")); },
         {QStringLiteral("NewToolTip")}},
        {"hidden", [&] { item->setVisible(false); }, {QStringLiteral("NewStatus")}},
    };
    for (const Case &test : cases) {
        host.signalNames.clear();
        test.change();
        QCoreApplication::processEvents();
        settle(host);
        EXPECT_EQ(host.signalNames, test.expected) << test.name;
    }
}

TEST_F(StatusItemTest, givesPicturesInNetworkByteOrder)
{
    qputenv("MIVORA_TRAY", "wide");
    FakeHost host(*m_bus);
    const auto item = makeItem();
    item->setTitle(QStringLiteral("Review · 2m"));
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
