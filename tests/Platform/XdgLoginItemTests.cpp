#include "Platform/linux/DesktopEntry.h"
#include "Platform/linux/XdgLoginItem.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>

#undef signals
#include <gio/gdesktopappinfo.h>

using namespace mivora;
using testing::HasSubstr;
using testing::Not;

namespace {

class XdgLoginItemTest : public testing::Test
{
protected:
    void write(const QString &folder, const QByteArray &lines) const
    {
        QDir().mkpath(folder + QStringLiteral("/autostart"));
        QFile file(folder + QStringLiteral("/autostart/app.kelo.Mivora.desktop"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines);
    }

    QString userPath() const { return m_user + QStringLiteral("/autostart/app.kelo.Mivora.desktop"); }

    std::string userEntry() const
    {
        QFile file(userPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }

    QTemporaryDir m_root;
    const QString m_user = m_root.filePath(QStringLiteral("user"));
    const QString m_system = m_root.filePath(QStringLiteral("system"));
    const QString m_program = QStringLiteral("/opt/mivora/bin/mivora");
    XdgLoginItem m_item{{m_user, {m_root.filePath(QStringLiteral("none")), m_system}, m_program}};
};

const QByteArray plain = "[Desktop Entry]\nType=Application\nName=Mivora\nExec=mivora\n";

} // namespace

TEST_F(XdgLoginItemTest, entriesAreOnUnlessTheySayOtherwise)
{
    const std::tuple<QByteArray, QByteArray, bool> rows[] = {
        {{}, {}, false},
        {plain, {}, true},
        {{}, plain, true},
        {plain + "Hidden=true\n", plain, false},
        {plain, plain + "Hidden=true\n", true},
        {plain + "X-GNOME-Autostart-enabled=false\n", {}, false},
        {plain + "Hidden=false\nX-GNOME-Autostart-enabled=true\n", {}, true},
        {"no desktop file", {}, false},
        {"[Other]\nHidden=false\n", {}, false},
    };
    for (const auto &[user, system, isEnabled] : rows) {
        QDir(m_user).removeRecursively();
        QDir(m_system).removeRecursively();
        if (!user.isNull())
            write(m_user, user);
        if (!system.isNull())
            write(m_system, system);
        EXPECT_EQ(m_item.isEnabled(), isEnabled) << user.constData() << "over " << system.constData();
        for (const bool wanted : {true, false, true}) {
            EXPECT_EQ(m_item.setEnabled(wanted), std::nullopt);
            EXPECT_EQ(m_item.isEnabled(), wanted) << user.constData();
        }
        EXPECT_THAT(userEntry(), HasSubstr("Exec=/opt/mivora/bin/mivora\n"));
    }
}

TEST_F(XdgLoginItemTest, whatTheUserPutIntoTheEntryIsKeptAndFailureIsDescribed)
{
    EXPECT_EQ(m_item.setEnabled(false), std::nullopt);
    EXPECT_FALSE(QDir(m_user).exists()) << "what is off leaves no trace";
    write(m_user, "# mine\n" + plain + "X-GNOME-Autostart-Delay=20\nName[de]=Mivora!\n\n[Extra]\na=b\n");
    m_item.setEnabled(false);
    m_item.setEnabled(true);
    for (const char *line : {"# mine\n", "-Delay=20\n", "Name[de]=Mivora!\n", "[Extra]\na=b\n"})
        EXPECT_THAT(userEntry(), HasSubstr(line));
    EXPECT_THAT(userEntry(), Not(HasSubstr("Hidden")));
    EXPECT_EQ(execLine(QStringLiteral("/opt/100%/mivora")), QStringLiteral("\"/opt/100%%/mivora\""));
    ASSERT_TRUE(QDir(m_user).removeRecursively() && QFile(m_user).open(QIODevice::WriteOnly));
    EXPECT_THAT(m_item.setEnabled(true).value_or(QString()).toStdString(), HasSubstr("user/autostart"));
}

/// GIO stands for the session managers, most of which start entries with it.
TEST_F(XdgLoginItemTest, anyProgramPathIsStartedAsItIs)
{
    const QString started = m_root.filePath(QStringLiteral("started"));
    for (const char *name : {"plain", "with blank", "a\"b", "a'b", "a\\b", "$HOME", "`id`", "a&b;c", "été",
                             "a=b#c", "tab\tnew\nline"}) {
        const QString program = m_root.filePath(QString::fromUtf8(name));
        QFile file(program);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\ntouch '" + QFile::encodeName(started) + "'\n");
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        file.close();
        XdgLoginItem({m_user, {}, program}).setEnabled(true);

        GDesktopAppInfo *info =
            g_desktop_app_info_new_from_filename(QFile::encodeName(userPath()).constData());
        ASSERT_TRUE(info) << userEntry();
        EXPECT_TRUE(g_app_info_launch(G_APP_INFO(info), nullptr, nullptr, nullptr)) << userEntry();
        EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::remove(started); })) << userEntry();
        g_object_unref(info);
    }
}
