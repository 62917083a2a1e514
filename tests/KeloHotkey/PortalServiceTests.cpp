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

    void makeService() { m_service = std::make_unique<PortalService>(m_purpose, m_bus.connection()); }

    bool becomes(const HotKeyState &state) const
    {
        return QTest::qWaitFor([&] { return m_service->state() == state; });
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

TEST_F(PortalServiceTest, bindsOneShortcutByItsNameAndFiresUnlessItIsSuspended)
{
    startPortal(Present);
    makeService();
    auto hotKey = create();
    EXPECT_FALSE(create());
    EXPECT_FALSE(create({400, commandKey}));
    ASSERT_TRUE(areBound(1));
    const FakePortal::Bound bound = m_portal->bound[0];
    EXPECT_EQ(QStringList({bound.name, bound.description, bound.trigger}).join(u' '),
              QStringLiteral("join Join SHIFT+LOGO+v"));

    m_portal->activate(bound.session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_runs == 1; }));
    m_portal->activate(QStringLiteral("/org/freedesktop/portal/desktop/session/someone/else"));
    m_service->suspend();
    m_portal->activate(bound.session);
    // Its session comes after all that the portal has told before.
    auto other = create({11, controlKey | optionKey});
    ASSERT_TRUE(areBound(2));
    EXPECT_EQ(m_portal->bound[1].name + m_portal->bound[1].trigger, QStringLiteral("joinCTRL+ALT+b"));
    EXPECT_EQ(m_portal->closed, QStringList{bound.session}) << "it takes the place of the first";
    EXPECT_EQ(m_runs, 1);
    m_service->resume();
    hotKey.reset();
    m_portal->activate(m_portal->bound[1].session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_runs == 2; }));

    other.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_portal->closed.size() == 2; }));
    create().reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_portal->closed.size() == 3; }));
    EXPECT_EQ(m_portal->bound.size(), 2U) << "the session came too late";
}

TEST_F(PortalServiceTest, tellsWhatTheDesktopAnsweredAndWhatItHasBound)
{
    using enum HotKeyState::Kind;
    const auto none = std::optional<QString>();

    const struct
    {
        const char *name;
        uint session;
        uint answer;
        std::optional<QString> keys;
        HotKeyState state;
    } rows[] = {
        {"yes", 0, 0, QStringLiteral("Ctrl+X"), {registered, QStringLiteral("Ctrl+X"), true, true}},
        {"yes, as GNOME writes it",
         0,
         0,
         QStringLiteral("Press <Control><Alt>j"),
         {registered, QStringLiteral("Ctrl+Alt+J"), true, true}},
        {"yes, without keys", 0, 0, QString(), {registered, {}, true, true}},
        {"no, but it is bound", 0, 2, QStringLiteral("Y"), {registered, QStringLiteral("Y"), true, true}},
        {"yes, but it is not bound", 0, 0, none, {refused}},
        {"no", 0, 2, none, {refused}},
        {"cancelled", 0, 1, none, {cancelled}},
        {"no session", 2, 0, none, {refused}},
    };

    startPortal(Present);
    m_portal->version = 2;
    makeService();
    for (const auto &row : rows) {
        m_portal->sessionResponse = row.session;
        m_portal->shortcutsResponse = row.answer;
        m_portal->boundKeys = row.keys;
        const auto hotKey = create();
        EXPECT_EQ(m_service->state().kind, waiting);
        EXPECT_TRUE(becomes(row.state)) << row.name << ' ' << m_service->state().keys.toStdString();
    }

    m_portal->sessionResponse = m_portal->shortcutsResponse = 0;
    m_portal->boundKeys = QStringLiteral("Z");
    const auto hotKey = create();
    EXPECT_TRUE(becomes({registered, QStringLiteral("Z"), true, true}));
    m_portal->change(m_portal->bound.back().session, QStringLiteral("Q"));
    EXPECT_TRUE(becomes({registered, QStringLiteral("Q"), true, true}));
    m_service->configure();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return m_portal->calls.contains(QStringLiteral("ConfigureShortcuts")); }));
    m_portal->close(m_portal->bound.back().session);
    EXPECT_TRUE(becomes({ended}));
}

TEST_F(PortalServiceTest, waitsForAPortalAndBindsAnewWhenItComesBack)
{
    using enum HotKeyState::Kind;
    startPortal(Missing);
    makeService();
    const auto hotKey = create();
    EXPECT_EQ(m_service->state().kind, waiting) << "before the portal has answered";
    EXPECT_TRUE(becomes({impossible}));
    startPortal(Present);
    ASSERT_TRUE(areBound(1));
    EXPECT_TRUE(becomes({registered, {}, true}));
    m_portal.reset();
    EXPECT_TRUE(becomes({ended}));
    startPortal(Present);
    ASSERT_TRUE(areBound(1));
    EXPECT_EQ(m_portal->calls.first(), QStringLiteral("Register")) << "it forgets whom it knew";
    m_portal->activate(m_portal->bound[0].session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_runs == 1; }));
}
