#include "Platform/linux/GioWorkspace.h"

#include "Platform/Activation.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace mivora;

namespace {

/// The user has folders of desktop files in which everything is opened by a program that writes its arguments
/// down, a line each.
class WorkspaceTest : public testing::Test
{
protected:
    // GIO reads where the folders are once.
    static void SetUpTestSuite()
    {
        QDir().mkpath(path("applications"));
        write("recorder", "#!/bin/sh\nprintf '%s\\n' \"$@\" $XDG_ACTIVATION_TOKEN >> '" +
                              path("opened").toUtf8() + "'\n");
        write("gnome-control-center", "#!/bin/sh\nexec recorder settings \"$@\"\n");
        write("mimeapps.list", "[Default Applications]\n");
        for (const char *folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            qputenv(folder, path("").toUtf8());
        // The programs of the machine stay out of it.
        for (const char *folders : {"XDG_DATA_DIRS", "XDG_CONFIG_DIRS"})
            qputenv(folders, path("none").toUtf8());
        qputenv("PATH", QByteArray(path("").toUtf8() + ":" + qgetenv("PATH")));
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        handler("https", "recorder browser %u");
        handler("zoommtg", "no-such-program %u");
        handler("file", "recorder file %u");
    }

    static QString path(const char *name) { return s_root.filePath(QLatin1String(name)); }

    static void write(const char *name, const QByteArray &content, QFile::OpenMode mode = QFile::WriteOnly)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(mode) && file.write(content) > 0);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    /// Has `exec` open links of the scheme.
    static void handler(const QByteArray &scheme, const QByteArray &exec)
    {
        const QByteArray type = "x-scheme-handler/" + scheme;
        write(QByteArray("applications/" + scheme + ".desktop").constData(),
              "[Desktop Entry]\nType=Application\nName=Test\nExec=" + exec + "\nMimeType=" + type + ";\n");
        write("mimeapps.list", type + '=' + scheme + ".desktop\n", QFile::Append);
    }

    void TearDown() override { QFile::remove(path("opened")); }

    std::optional<bool> open(const char *url)
    {
        std::optional<bool> answer;
        m_workspace.open(QString::fromUtf8(url), [&](bool opened) {
            EXPECT_FALSE(answer);
            answer = opened;
        });
        EXPECT_FALSE(answer) << "before the event loop ran";
        EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 10'000));
        return answer;
    }

    static bool isRecorded(const std::string &expected)
    {
        return QTest::qWaitFor([&] {
            QFile file(path("opened"));
            return file.open(QFile::ReadOnly) && file.readAll().toStdString() == expected;
        });
    }

    static inline const QTemporaryDir s_root;
    GioWorkspace m_workspace;
};

} // namespace

TEST_F(WorkspaceTest, linkReachesItsHandlerUnchangedOrIsReported)
{
    for (const char *url :
         {"zoommtg://zoom.us/join?confno=1", "msteams://teams.example/l", "file:///etc/passwd", ""})
        EXPECT_EQ(open(url), false) << url;
    const std::string url = "https://ZOOM.us/j/1?pwd=a%2Fb&x='$(id)'#é";
    EXPECT_EQ(open(url.c_str()), true);
    EXPECT_TRUE(isRecorded("browser\n" + url + '\n'));
}

TEST_F(WorkspaceTest, appInstalledMeanwhileIsFound)
{
    EXPECT_TRUE(m_workspace.hasHandler(QStringLiteral("https")));
    EXPECT_FALSE(m_workspace.hasHandler(QStringLiteral("zoommtg"))) << "without its program";
    EXPECT_FALSE(m_workspace.hasHandler(QStringLiteral("msteams")));
    // Programs that live in a folder of their own quote it.
    handler("msteams", R"("recorder" teams %u)");
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_workspace.hasHandler(QStringLiteral("msteams")); }));
    holdActivation({.token = "token"});
    EXPECT_EQ(open("msteams://l/1"), true);
    EXPECT_TRUE(isRecorded("teams\nmsteams://l/1\ntoken\n")) << "it may come to the front";
}

TEST_F(WorkspaceTest, settingsLinksOpenTheDesktopsPanel)
{
    for (const auto &[desktops, opens] :
         {std::pair("sway", false), {"GNOMEX:XGNOME", false}, {"ubuntu:gnome", true}}) {
        qputenv("XDG_CURRENT_DESKTOP", desktops);
        EXPECT_EQ(m_workspace.leadsSomewhere(QLatin1String(internetAccountsLink)), opens) << desktops;
        EXPECT_EQ(open(internetAccountsLink), opens) << desktops;
    }
    EXPECT_TRUE(isRecorded("settings\nonline-accounts\n"));
    EXPECT_EQ(open("x-apple.systempreferences:other"), false);
    qputenv("PATH", "/nonexistent");
    EXPECT_EQ(open(internetAccountsLink), false);
}
