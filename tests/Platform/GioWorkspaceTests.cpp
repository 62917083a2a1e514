#include "Platform/linux/GioWorkspace.h"

#include "support/RecordingDesktop.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace mivora;

namespace {

class WorkspaceTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_desktop = std::make_unique<support::RecordingDesktop>();
        s_desktop->handler("x-scheme-handler/https", "recorder browser %u");
        s_desktop->handler("x-scheme-handler/zoommtg", "no-such-program %u");
        s_desktop->handler("x-scheme-handler/file", "recorder file %u");
        s_desktop->script("gnome-control-center", "exec recorder settings \"$@\"\n");
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }

    static void TearDownTestSuite() { s_desktop.reset(); }

    void TearDown() override { QFile::remove(s_desktop->path("opened")); }

    std::optional<bool> open(const QString &url)
    {
        std::optional<bool> answer;
        m_workspace.open(url, [&](bool opened) {
            EXPECT_FALSE(answer);
            answer = opened;
        });
        EXPECT_FALSE(answer) << "before the event loop ran";
        EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 10'000));
        return answer;
    }

    static bool isRecorded(const QStringList &expected)
    {
        return QTest::qWaitFor([&] { return s_desktop->opened() == expected; });
    }

    static inline std::unique_ptr<support::RecordingDesktop> s_desktop;
    GioWorkspace m_workspace;
};

} // namespace

TEST_F(WorkspaceTest, linkReachesItsHandlerUnchanged)
{
    const QString url = QStringLiteral("https://ZOOM.us/j/1?pwd=a%2Fb&x='$(id)'#é");
    EXPECT_EQ(open(url), true);
    EXPECT_TRUE(isRecorded({QStringLiteral("browser"), url}));
}

TEST_F(WorkspaceTest, linksThatNothingOpensAreReported)
{
    for (const char *url : {"zoommtg://zoom.us/join?confno=1", "msteams://teams.example/l",
                            "file:///etc/passwd", "javascript:alert(1)", "ftp://example.org", "no link", ""})
        EXPECT_EQ(open(QString::fromLatin1(url)), false) << url;
    EXPECT_EQ(s_desktop->opened(), QStringList());
}

TEST_F(WorkspaceTest, appInstalledMeanwhileIsFound)
{
    EXPECT_TRUE(m_workspace.hasHandler(QStringLiteral("https")));
    EXPECT_FALSE(m_workspace.hasHandler(QStringLiteral("zoommtg"))) << "without its program";
    EXPECT_FALSE(m_workspace.hasHandler(QStringLiteral("msteams")));
    // Programs that live in a folder of their own quote it.
    s_desktop->handler("x-scheme-handler/msteams", R"("recorder" teams %u)");
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_workspace.hasHandler(QStringLiteral("msteams")); }));
    EXPECT_EQ(open(QStringLiteral("msteams://l/1")), true);
    EXPECT_TRUE(isRecorded({QStringLiteral("teams"), QStringLiteral("msteams://l/1")}));
}

TEST_F(WorkspaceTest, settingsLinksOpenTheDesktopsPanel)
{
    const QString accounts =
        QStringLiteral("x-apple.systempreferences:com.apple.Internet-Accounts-Settings.extension");
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    EXPECT_EQ(open(accounts), true);
    EXPECT_TRUE(isRecorded({QStringLiteral("settings"), QStringLiteral("online-accounts")}));
    qputenv("XDG_CURRENT_DESKTOP", "sway");
    EXPECT_EQ(open(accounts), false);
    qputenv("XDG_CURRENT_DESKTOP", "XFCE");
    qputenv("PATH", "/nonexistent");
    EXPECT_EQ(open(accounts), false);
}
