#include "Platform/linux/PortalLoginItem.h"
#include "support/FakeLoginItem.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace mivora;

namespace {

class PortalLoginItemTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!support::PrivateBus::isInstalled())
            GTEST_SKIP() << "dbus-daemon is not installed";
        m_bus = std::make_unique<support::PrivateBus>();
        auto memory = std::make_unique<FakeLoginItem>();
        m_memory = memory.get();
        m_item = std::make_unique<PortalLoginItem>(std::move(memory), m_bus->connection());
    }

    std::unique_ptr<support::PrivateBus> m_bus;
    FakeLoginItem *m_memory = nullptr;
    std::unique_ptr<PortalLoginItem> m_item;
};

} // namespace

TEST_F(PortalLoginItemTest, remembersWhatThePortalGranted)
{
    support::FakePortal portal(m_bus->connection());
    for (const bool wanted : {true, false}) {
        portal.backgroundRequests.clear();
        EXPECT_EQ(m_item->setEnabled(wanted), std::nullopt);
        EXPECT_NE(m_item->isEnabled(), wanted) << "before the portal has answered";
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_item->isEnabled() == wanted; }));
        ASSERT_EQ(portal.backgroundRequests.size(), 1u);
        const QVariantMap &options = portal.backgroundRequests[0];
        EXPECT_EQ(options.value(QStringLiteral("autostart")), QVariant(wanted));
        EXPECT_EQ(options.value(QStringLiteral("commandline")).toStringList(),
                  QStringList(QStringLiteral("mivora")));
    }
}

TEST_F(PortalLoginItemTest, aRefusalIsLoggedAndNotRemembered)
{
    for (const bool isThere : {true, false}) {
        std::unique_ptr<support::FakePortal> portal;
        if (isThere) {
            portal = std::make_unique<support::FakePortal>(m_bus->connection());
            portal->backgroundResponse = 1;
        }
        testing::internal::CaptureStderr();
        m_item->setEnabled(true);
        EXPECT_FALSE(QTest::qWaitFor([&] { return m_item->isEnabled(); }, 500));
        EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("Mivora: launch at login change failed: ", 0),
                  0u)
            << (isThere ? "refused" : "no portal");
        EXPECT_TRUE(m_memory->requests.empty());
    }
}
