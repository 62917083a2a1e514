#include "KeloMenuBar/StatusItem.h"
#include "FakeHost.h"
#include "KeloMenuBar/StatusItemController.h"

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

TEST_F(StatusItemTest, isRegisteredWithEachHostThatComes)
{
    const auto item = makeItem();
    item->setTitle(QStringLiteral("Review · 2m"));
    for (int round = 0; round < 2; ++round) {
        FakeHost host(*m_bus);
        ASSERT_TRUE(isShown(host)) << "round " << round;
        EXPECT_EQ(host.property("Title").toString(), QStringLiteral("Review · 2m"));
        EXPECT_EQ(host.property("Status").toString(), QStringLiteral("Active"));
        EXPECT_EQ(host.registered.size(), 1);
    }
}

TEST_F(StatusItemTest, isBuiltAnewAtEachOpening)
{
    FakeHost host(*m_bus);
    const auto item = makeItem();
    ASSERT_TRUE(isShown(host));

    const DBusMenuLayout first = host.open();
    const DBusMenuLayout second = host.open();
    ASSERT_EQ(second.children.size(), 2);
    const QString label = second.children[0].properties.value(QStringLiteral("label")).toString();
    EXPECT_EQ(label, QStringLiteral("Opening %1").arg(m_openings));
    EXPECT_NE(first.children[0].id, second.children[0].id);

    const QDBusMessage group = host.menu(
        "GetGroupProperties", {QVariant::fromValue(QList<int>{second.children[0].id}), QStringList()});
    const auto properties = qdbus_cast<QList<DBusMenuProperties>>(group.arguments().value(0));
    ASSERT_EQ(properties.size(), 1);
    EXPECT_EQ(properties[0].properties, second.children[0].properties);
}

TEST_F(StatusItemTest, runsWhatIsChosenAlsoFromTheOpeningBefore)
{
    FakeHost host(*m_bus);
    const auto item = makeItem();
    ASSERT_TRUE(isShown(host));
    const int before = host.open().children[0].id;
    const int opening = m_openings;
    host.open();
    host.click(before);
    EXPECT_TRUE(waitFor([&] { return m_chosen == QList<int>{opening}; }));

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

TEST_F(StatusItemTest, controllerShowsASymbolAndItsMenu)
{
    FakeHost host(*m_bus);
    StatusItemController controller(
        symbol, QStringLiteral("Mivora"), [](Menu &menu) { menu.addItem(QStringLiteral("Quit"), {}, {}); },
        program, m_bus->connection());
    ASSERT_TRUE(isShown(host));
    EXPECT_EQ(host.property("Title").toString(), QStringLiteral("Mivora"));
    EXPECT_EQ(host.open().children.size(), 1);

    controller.setVisible(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(host.property("Status").toString(), QStringLiteral("Passive"));
    EXPECT_FALSE(controller.isVisible());
}
