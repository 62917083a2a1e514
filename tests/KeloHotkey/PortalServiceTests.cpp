#include "KeloHotkey/backends/PortalService.h"

#include "KeloHotkey/HotKey.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

using namespace kelo;
using support::FakePortal;
using enum FakePortal::Shortcuts;

class PortalServiceTest : public testing::Test
{
protected:
    void startPortal(FakePortal::Shortcuts shortcuts)
    {
        m_portal.reset();
        m_portal = std::make_unique<FakePortal>(m_bus.connection(), shortcuts);
    }

    std::unique_ptr<HotKey> create(const HotKeyCombo &combo = HotKeyCombo::defaultCombo)
    {
        return HotKey::create(*m_service, combo, [this] { ++m_runs; });
    }

    bool areBound(std::size_t count) const
    {
        return QTest::qWaitFor([&] { return m_portal->bound.size() == count; });
    }

    const HotKeyPurpose m_purpose{QStringLiteral("join"), QStringLiteral("Join"), QStringLiteral("app join")};
    support::PrivateBus m_bus;
    std::unique_ptr<FakePortal> m_portal;
    std::unique_ptr<PortalService> m_service;
    int m_runs = 0;
};

TEST_F(PortalServiceTest, bindsTheCombinationAndFiresUnlessItIsSuspended)
{
    startPortal(Present);
    m_service = std::make_unique<PortalService>(m_purpose, m_bus.connection());
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_service->canRegister(); }));
    auto hotKey = create();
    EXPECT_FALSE(create());
    EXPECT_FALSE(create({400, commandKey}));
    ASSERT_TRUE(areBound(1));
    const FakePortal::Bound bound = m_portal->bound[0];
    EXPECT_EQ(QStringList({bound.name, bound.description, bound.trigger}).join(u' '),
              QStringLiteral("join-9-768 Join SHIFT+LOGO+v"));

    m_portal->activate(bound.session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_runs == 1; }));
    m_portal->activate(QStringLiteral("/org/freedesktop/portal/desktop/session/someone/else"));
    m_service->suspend();
    m_portal->activate(bound.session);
    // Its session comes after all that the portal has told before.
    const auto other = create({11, controlKey | optionKey});
    ASSERT_TRUE(areBound(2));
    EXPECT_EQ(m_portal->bound[1].trigger, QStringLiteral("CTRL+ALT+b"));
    EXPECT_EQ(m_runs, 1);
    m_service->resume();
    m_portal->activate(m_portal->bound[1].session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_runs == 2; }));

    hotKey.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_portal->closed == QStringList{bound.session}; }));
    create().reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_portal->closed.size() == 2; }));
    EXPECT_EQ(m_portal->bound.size(), 2U) << "the session came too late";
}

TEST_F(PortalServiceTest, waitsForAPortalAndBindsAnewWhenItComesBack)
{
    startPortal(Missing);
    testing::internal::CaptureStderr();
    m_service = std::make_unique<PortalService>(m_purpose, m_bus.connection());
    int changes = 0;
    QObject::connect(m_service.get(), &HotKeyService::availabilityChanged, [&] { ++changes; });
    EXPECT_FALSE(create()) << "before the portal has answered";
    startPortal(Missing);
    startPortal(Present);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_service->canRegister(); }));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("\"app join\""), std::string::npos) << log;
    EXPECT_EQ(log.find("\"app join\""), log.rfind("\"app join\"")) << "what to do is said once";

    const auto hotKey = create();
    ASSERT_TRUE(areBound(1));
    startPortal(Present);
    ASSERT_TRUE(areBound(1));
    EXPECT_EQ(m_portal->calls.first(), QStringLiteral("Register")) << "it forgets whom it knew";
    m_portal->activate(m_portal->bound[0].session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_runs == 1; }));
    EXPECT_EQ(changes, 1);
}
