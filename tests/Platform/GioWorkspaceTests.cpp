#include "Platform/linux/GioWorkspace.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace mivora;

namespace {

/// A home with handlers of its own: scripts that write down what they were given.
class Desktop
{
public:
    Desktop()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_root.filePath(QStringLiteral("data"))));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_root.filePath(QStringLiteral("config"))));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(m_root.filePath(QStringLiteral("system"))));
        qputenv("XDG_CONFIG_DIRS", QFile::encodeName(m_root.filePath(QStringLiteral("none"))));
        qputenv("XDG_CURRENT_DESKTOP", "GNOME");
        qputenv("PATH", QFile::encodeName(m_root.path()) + ":" + qgetenv("PATH"));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        script("recorder", "printf '%s\\n' \"$@\" >> '" + QFile::encodeName(record()) + "'\n");
        script("gnome-control-center",
               "printf 'settings %s\\n' \"$@\" >> '" + QFile::encodeName(record()) + "'\n");
        QDir().mkpath(m_root.filePath(QStringLiteral("config")));
        QDir().mkpath(m_root.filePath(QStringLiteral("data/applications")));
    }

    QString record() const { return m_root.filePath(QStringLiteral("opened")); }

    void script(const char *name, const QByteArray &body) const
    {
        QFile file(m_root.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + body);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    }

    /// Installs a handler of \a scheme that runs \a exec.
    void handler(const QByteArray &scheme, const QByteArray &exec) const
    {
        const QString applications = m_root.filePath(QStringLiteral("data/applications/"));
        QFile entry(applications + QString::fromLatin1(scheme) + QStringLiteral(".desktop"));
        EXPECT_TRUE(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nType=Application\nName=Test\nExec=" + exec +
                    "\nMimeType=x-scheme-handler/" + scheme + ";\n");
        QFile defaults(m_root.filePath(QStringLiteral("config/mimeapps.list")));
        const bool isNew = !defaults.exists();
        EXPECT_TRUE(defaults.open(QIODevice::Append));
        defaults.write((isNew ? QByteArray("[Default Applications]\n") : QByteArray()) + "x-scheme-handler/" +
                       scheme + '=' + scheme + ".desktop\n");
    }

    QStringList opened() const
    {
        QFile file(record());
        return file.open(QIODevice::ReadOnly)
                   ? QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)
                   : QStringList();
    }

private:
    QTemporaryDir m_root;
};

class WorkspaceTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        s_desktop = std::make_unique<Desktop>();
        s_desktop->handler("https", "recorder browser %u");
        s_desktop->handler("zoommtg", "no-such-program %u");
        s_desktop->handler("file", "recorder file %u");
    }

    static void TearDownTestSuite() { s_desktop.reset(); }

    void TearDown() override { QFile::remove(s_desktop->record()); }

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

    static inline std::unique_ptr<Desktop> s_desktop;
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

TEST_F(WorkspaceTest, handlerWithoutItsProgramIsNone)
{
    EXPECT_TRUE(m_workspace.hasHandler(QStringLiteral("https")));
    EXPECT_FALSE(m_workspace.hasHandler(QStringLiteral("zoommtg")));
    EXPECT_FALSE(m_workspace.hasHandler(QStringLiteral("msteams")));
}

TEST_F(WorkspaceTest, appInstalledMeanwhileIsFound)
{
    EXPECT_FALSE(m_workspace.hasHandler(QStringLiteral("msteams")));
    // Programs that live in a folder of their own quote it.
    s_desktop->handler("msteams", R"("recorder" teams %u)");
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_workspace.hasHandler(QStringLiteral("msteams")); }));
    EXPECT_EQ(open(QStringLiteral("msteams://l/1")), true);
    EXPECT_TRUE(isRecorded({QStringLiteral("teams"), QStringLiteral("msteams://l/1")}));
}

TEST_F(WorkspaceTest, settingsLinksOpenTheDesktopsPanel)
{
    const QString accounts =
        QStringLiteral("x-apple.systempreferences:com.apple.Internet-Accounts-Settings.extension");
    EXPECT_EQ(open(accounts), true);
    EXPECT_TRUE(isRecorded({QStringLiteral("settings online-accounts")}));
    qputenv("XDG_CURRENT_DESKTOP", "sway");
    EXPECT_EQ(open(accounts), false);
    qputenv("XDG_CURRENT_DESKTOP", "XFCE");
    qputenv("PATH", "/nonexistent");
    EXPECT_EQ(open(accounts), false);
}
