#include "KeloHotkey/backends/PortalService.h"

#include "KeloHotkey/HotKey.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

using namespace kelo;
using support::FakePortal;

namespace {

class PortalServiceTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!support::PrivateBus::isInstalled())
            GTEST_SKIP() << "dbus-daemon is not installed";
        m_bus = std::make_unique<support::PrivateBus>();
    }

    // A service whose portal has answered.
    std::unique_ptr<PortalService> readyService()
    {
        auto service = std::make_unique<PortalService>(m_purpose, m_bus->connection());
        EXPECT_FALSE(service->canRegister()) << "before the portal has answered";
        EXPECT_TRUE(QTest::qWaitFor([&] { return service->canRegister(); }));
        return service;
    }

    const HotKeyPurpose m_purpose{QStringLiteral("join"), QStringLiteral("Join"), QStringLiteral("app join")};
    std::unique_ptr<support::PrivateBus> m_bus;
};

} // namespace

TEST_F(PortalServiceTest, bindsTheCombinationAndFires)
{
    FakePortal portal(m_bus->connection());
    const auto service = readyService();
    int runs = 0;
    auto hotKey = HotKey::create(*service, HotKeyCombo::defaultCombo, [&] { ++runs; });
    ASSERT_TRUE(hotKey);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.bound.size() == 1; }));
    EXPECT_EQ(portal.bound[0].name, QStringLiteral("join-9-768"));
    EXPECT_EQ(portal.bound[0].description, QStringLiteral("Join"));
    EXPECT_EQ(portal.bound[0].trigger, QStringLiteral("SHIFT+LOGO+v"));

    portal.activate(portal.bound[0].session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return runs == 1; }));
    portal.activate(QStringLiteral("/org/freedesktop/portal/desktop/session/someone/else"));
    service->suspend();
    portal.activate(portal.bound[0].session);
    QTest::qWait(100);
    EXPECT_EQ(runs, 1);

    hotKey.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal.closed == QStringList{portal.bound[0].session}; }));
}

TEST_F(PortalServiceTest, closesASessionThatComesTooLate)
{
    FakePortal portal(m_bus->connection());
    const auto service = readyService();
    HotKey::create(*service, HotKeyCombo::defaultCombo, [] {}).reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal.closed.size() == 1; }));
    EXPECT_TRUE(portal.bound.empty());
}

TEST_F(PortalServiceTest, refusesWhatCanNotBeRegisteredButNotWhatTheUserRefuses)
{
    FakePortal portal(m_bus->connection());
    portal.bindResponse = 1;
    const auto service = readyService();
    const auto hotKey = HotKey::create(*service, HotKeyCombo::defaultCombo, [] {});
    EXPECT_TRUE(hotKey);
    EXPECT_FALSE(HotKey::create(*service, HotKeyCombo::defaultCombo, [] {}));
    EXPECT_FALSE(HotKey::create(*service, {400, commandKey}, [] {}));
}

TEST_F(PortalServiceTest, bindsAnewWhenThePortalComesBack)
{
    auto portal = std::make_unique<FakePortal>(m_bus->connection());
    const auto service = readyService();
    int runs = 0;
    const auto hotKey = HotKey::create(*service, HotKeyCombo::defaultCombo, [&] { ++runs; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->bound.size() == 1; }));
    portal.reset();
    portal = std::make_unique<FakePortal>(m_bus->connection());
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal->bound.size() == 1; }));
    portal->activate(portal->bound[0].session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return runs == 1; }));
}

TEST_F(PortalServiceTest, saysOnceWhatToDoWithoutAPortalAndWaitsForOne)
{
    testing::internal::CaptureStderr();
    PortalService service(m_purpose, m_bus->connection());
    int changes = 0;
    QObject::connect(&service, &HotKeyService::availabilityChanged, [&] { ++changes; });
    QTest::qWait(200);
    auto portal = std::make_unique<FakePortal>(m_bus->connection(), FakePortal::Shortcuts::Missing);
    QTest::qWait(200);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_FALSE(service.canRegister());
    EXPECT_NE(log.find("\"app join\""), std::string::npos) << log;
    EXPECT_EQ(log.find("\"app join\""), log.rfind("\"app join\"")) << log;
    portal.reset();
    portal = std::make_unique<FakePortal>(m_bus->connection());
    EXPECT_TRUE(QTest::qWaitFor([&] { return changes == 1; }));
    EXPECT_TRUE(service.canRegister());
}
