#include "Platform/linux/PortalLoginItem.h"
#include "Platform/linux/XdgLoginItem.h"
#include "support/FakeLoginItem.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <gmock/gmock.h>

using namespace mivora;
using testing::HasSubstr;
using testing::Not;

namespace {

class XdgLoginItemTest : public testing::Test
{
protected:
    /// Nothing where there are no lines.
    void write(const QString &folder, const QByteArray &lines) const
    {
        QDir(folder).removeRecursively();
        if (lines.isEmpty())
            return;
        QDir().mkpath(folder + QStringLiteral("/autostart"));
        QFile file(folder + m_entry);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines);
    }

    std::string userEntry() const
    {
        QFile file(m_user + m_entry);
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }

    QTemporaryDir m_root;
    const QString m_entry = QStringLiteral("/autostart/app.kelo.Mivora.desktop");
    const QString m_user = m_root.filePath(QStringLiteral("user"));
    const QString m_system = m_root.filePath(QStringLiteral("system"));
    XdgLoginItem m_item{
        {m_user, {m_root.filePath(QStringLiteral("none")), m_system}, QStringLiteral("/opt/mivora")}};
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
        {"no desktop file", {}, false},
        {"[Other]\n", {}, false},
    };
    for (const auto &[user, system, isEnabled] : rows) {
        write(m_user, user);
        write(m_system, system);
        EXPECT_EQ(m_item.isEnabled(), isEnabled) << user.constData() << "over " << system.constData();
        for (const bool wanted : {true, false, true}) {
            EXPECT_EQ(m_item.setEnabled(wanted), std::nullopt);
            EXPECT_EQ(m_item.isEnabled(), wanted) << user.constData();
        }
        EXPECT_THAT(userEntry(), HasSubstr("TryExec=/opt/mivora\n"));
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
    write(m_user, "[Desktop Entry]\nExec=/opt/mivora\n");
    m_item.renew();
    EXPECT_THAT(userEntry(), HasSubstr("Exec=/opt/mivora --at-login\n")) << "of an earlier version";
    ASSERT_TRUE(QDir(m_user).removeRecursively() && QFile(m_user).open(QIODevice::WriteOnly));
    EXPECT_THAT(m_item.setEnabled(true).value_or(QString()).toStdString(), HasSubstr("user/autostart"));
}

// Quoted as a command line, then escaped as a value.
TEST_F(XdgLoginItemTest, anyProgramPathIsStartedAsItIs)
{
    for (const auto &[program, line] : {std::pair("/été/a=b", "/été/a=b"),
                                        {"/a b", R"("/a b")"},
                                        {"/100%", R"("/100%%")"},
                                        {"/a\"b`c$d\\e", R"("/a\\"b\\`c\\$d\\\\e")"},
                                        {"/a\tb\nc", "\"/a\tb\\nc\""}}) {
        XdgLoginItem({m_user, {}, QString::fromUtf8(program)}).setEnabled(true);
        EXPECT_THAT(userEntry(), HasSubstr(std::string("\nExec=") + line + " --at-login\n"));
    }
}

TEST(PortalLoginItem, remembersWhatThePortalGrantedAndLogsWhatItRefused)
{
    support::PrivateBus bus;
    auto owned = std::make_unique<FakeLoginItem>();
    const FakeLoginItem &memory = *owned;
    PortalLoginItem item(std::move(owned), bus.connection());
    testing::internal::CaptureStderr();
    support::FakePortal portal(bus.connection());
    portal.backgroundResponse = 1;
    item.setEnabled(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.backgroundRequests.size() == 1; }));
    portal.backgroundResponse = 0;
    for (const bool wanted : {true, false}) {
        EXPECT_EQ(item.setEnabled(wanted), std::nullopt);
        EXPECT_NE(item.isEnabled(), wanted) << "before the portal has answered";
        ASSERT_TRUE(QTest::qWaitFor([&] { return item.isEnabled() == wanted; }));
        const QVariantMap &options = portal.backgroundRequests.back();
        EXPECT_EQ(options.value(QStringLiteral("autostart")), QVariant(wanted));
        EXPECT_EQ(options.value(QStringLiteral("commandline")).toStringList(),
                  QStringList(QStringLiteral("mivora")));
    }
    EXPECT_EQ(memory.requests, std::vector({true, false}));
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::MatchesRegex("Mivora: launch at login change failed: [^\n]*\n"));
}
