#include "KeloHotkey/backends/PortalService.h"

#include "KeloHotkey/HotKey.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QDir>
#include <QProcess>
#include <QtCore/qtestsupport_core.h>
#include <fstream>
#include <gmock/gmock.h>

using namespace kelo;
using support::FakePortal;
using namespace std::chrono_literals;
using namespace testing;

const QString trigger = QStringLiteral("preferred_trigger");

class PortalServiceTest : public testing::Test
{
protected:
    void startPortal(bool hasShortcuts = true)
    {
        m_portal.reset();
        m_portal = std::make_unique<FakePortal>(m_bus.connection(), hasShortcuts);
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
    startPortal();
    makeService();
    auto hotKey = create();
    EXPECT_FALSE(create());
    EXPECT_FALSE(create({400, commandKey}));
    ASSERT_TRUE(areBound(1));
    const auto [session, shortcut] = m_portal->bound[0];
    EXPECT_EQ(shortcut.name, m_purpose.name);
    EXPECT_EQ(shortcut.properties.value(QStringLiteral("description")), m_purpose.description);
    EXPECT_EQ(shortcut.properties.value(trigger), QStringLiteral("SHIFT+LOGO+v"));

    m_portal->activate(session);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_runs == 1; }));
    m_portal->activate(QStringLiteral("/org/freedesktop/portal/desktop/session/someone/else"));
    m_service->suspend();
    m_portal->activate(session);
    // Its session comes after all that the portal has told before.
    auto other = create({11, controlKey | optionKey});
    ASSERT_TRUE(areBound(2));
    EXPECT_EQ(m_portal->bound[1].shortcut.properties.value(trigger), QStringLiteral("CTRL+ALT+b"));
    EXPECT_EQ(m_portal->closed, QStringList{session}) << "it takes the place of the first";
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
    const auto bound = [](const char *keys) {
        return HotKeyState{registered, QLatin1String(keys), true, true};
    };

    const struct
    {
        const char *name;
        uint session;
        uint answer;
        const char *keys;
        HotKeyState state;
        std::chrono::milliseconds reactionTime = 1h;
    } rows[] = {
        {"yes", 0, 0, "Ctrl+X", bound("Ctrl+X")},
        {"yes, as GNOME writes it", 0, 0, "Press <Control><Alt>j", bound("Ctrl+Alt+J")},
        {"yes, without keys", 0, 0, "", bound("")},
        {"no, but it is bound", 0, 2, "+", bound("+")},
        {"yes, but it is not bound", 0, 0, nullptr, {refused}},
        {"failed", 0, 2, nullptr, {refused}},
        {"cancelled", 0, 1, nullptr, {cancelled}},
        {"cancelled, as GNOME says it", 0, 2, nullptr, {cancelled}, 0ms},
        {"no session", 2, 0, nullptr, {refused}, 0ms},
    };

    startPortal();
    m_portal->version = 2;
    makeService();
    for (const auto &row : rows) {
        m_portal->sessionResponse = row.session;
        m_portal->shortcutsResponse = row.answer;
        m_portal->boundKeys = row.keys ? std::optional(QLatin1String(row.keys)) : std::nullopt;
        m_service->reactionTime = row.reactionTime;
        const auto hotKey = create();
        EXPECT_EQ(m_service->state().kind, waiting);
        EXPECT_TRUE(becomes(row.state)) << row.name << ' ' << m_service->state().keys.toStdString();
    }

    m_portal->sessionResponse = 0;
    m_portal->boundKeys = QStringLiteral("Z");
    const auto hotKey = create();
    EXPECT_TRUE(becomes(bound("Z")));
    m_portal->change(m_portal->bound.back().session, QStringLiteral("Q"));
    EXPECT_TRUE(becomes(bound("Q")));
    m_service->configure();
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return m_portal->calls.contains(QStringLiteral("ConfigureShortcuts")); }));
    m_portal->close(m_portal->bound.back().session);
    EXPECT_TRUE(becomes({ended}));
}

TEST_F(PortalServiceTest, waitsForAPortalAndBindsAnewWhenItComesBack)
{
    using enum HotKeyState::Kind;
    startPortal(false);
    makeService();
    const auto hotKey = create();
    EXPECT_EQ(m_service->state().kind, waiting) << "before the portal has answered";
    EXPECT_TRUE(becomes({impossible}));
    startPortal();
    EXPECT_TRUE(becomes({registered, {}, true}));
    m_portal.reset();
    EXPECT_TRUE(becomes({ended}));
    startPortal();
    ASSERT_TRUE(areBound(1));
    EXPECT_EQ(m_portal->calls.first(), QStringLiteral("Register")) << "it forgets whom it knew";
}

TEST_F(PortalServiceTest, makesAKeybindingOfGnomesWhereThePortalHasNoShortcuts)
{
    using enum HotKeyState::Kind;
    const QTemporaryDir folder;
    ASSERT_EQ(QProcess::execute(QStringLiteral("glib-compile-schemas"),
                                {QLatin1String("--targetdir=") + folder.path(),
                                 QStringLiteral(MIVORA_TEST_DATA "/schemas")}),
              0);
    for (const char *variable : {"GSETTINGS_SCHEMA_DIR", "XDG_CONFIG_HOME"})
        qputenv(variable, folder.path().toLocal8Bit());
    qputenv("GSETTINGS_BACKEND", "keyfile");
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    EXPECT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("glib-2.0/settings")));
    const std::string path = folder.filePath(QStringLiteral("glib-2.0/settings/keyfile")).toStdString();
    const std::string before = "[media]\ncustom-keybindings=['/own/']\n\n[own]\nbinding='<Super>t'\n";
    std::ofstream(path) << before;
    const auto settings = [&] {
        std::ifstream file(path);
        return std::string(std::istreambuf_iterator(file), {});
    };

    const HotKeyCombo wanted{38, controlKey | optionKey};
    const HotKeyState works{registered, QStringLiteral("Ctrl+Alt+J")};
    startPortal(false);
    std::unique_ptr<HotKey> hotKey;
    for (const char *run : {"first", "second"}) {
        m_service.reset();
        makeService();
        hotKey = create(wanted);
        EXPECT_TRUE(becomes(works)) << run;
        EXPECT_THAT(settings(), AllOf(HasSubstr("='<Control><Alt>j'"), HasSubstr("KeloHotkeyTests join'")));
        EXPECT_THAT(settings(), ContainsRegex("=.'/own/', '/[^,]*/mivora-join/'.\n")) << run;
    }
    for (const HotKeyCombo &taken : {HotKeyCombo{118, optionKey}, {50, wanted.modifiers}, {17, commandKey}})
        EXPECT_FALSE(create(taken)) << taken.text().toStdString();
    m_service->suspend();
    EXPECT_EQ(m_service->state(), works);
    m_service->resume();
    std::string changed = settings();
    std::ofstream(path) << changed.replace(changed.find("<Alt>j"), 6, "<Alt>k");
    EXPECT_TRUE(becomes({registered, QStringLiteral("Ctrl+Alt+K"), true})) << "the user has changed it";
    hotKey.reset();
    EXPECT_THAT(settings(), StartsWith(before)) << "all is as before";
    qunsetenv("XDG_CURRENT_DESKTOP");
}
