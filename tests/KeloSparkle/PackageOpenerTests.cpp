#include "KeloSparkle/PackageOpener.h"

#include "support/PrivateBus.h"
#include "support/RecordingDesktop.h"

#include <QTest>
#include <gtest/gtest.h>
#include <optional>

namespace kelo {

namespace {

/// A file manager that only writes down what it is to show.
class FakeFileManager final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QStringList shown;

public Q_SLOTS:

    void ShowItems(const QStringList &addresses, const QString &) { shown << addresses; }
};

} // namespace

TEST(PackageOpenerTests, theDesktopsProgramGetsThePackage)
{
    const support::RecordingDesktop desktop;
    // What the package is called depends on the system's list of types.
    for (const char *type : {"application/vnd.debian.binary-package", "application/x-debian-package",
                             "application/octet-stream", "text/plain"})
        desktop.handler(type, "recorder %f");
    const QString package = desktop.path("a %20 & 'b'.deb");
    desktop.write("a %20 & 'b'.deb", "!<arch>\ndebian-binary   ");
    std::optional<bool> isOpen;
    openPackage(package, [&](bool result) { isOpen = result; });
    EXPECT_FALSE(isOpen) << "it is said later";
    EXPECT_TRUE(QTest::qWaitFor([&] { return isOpen && !desktop.opened().isEmpty(); }));
    EXPECT_EQ(isOpen, true);
    EXPECT_EQ(desktop.opened(), QStringList(package));

    QFile::remove(desktop.path("mimeapps.list"));
    QDir(desktop.path("applications")).removeRecursively();
    isOpen.reset();
    openPackage(package, [&](bool result) { isOpen = result; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isOpen.has_value(); }));
    EXPECT_EQ(isOpen, false);
}

TEST(PackageOpenerTests, theFileManagerShowsThePackage)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "no dbus-daemon";
    support::PrivateBus bus;
    std::optional<bool> isShown;
    const auto show = [&](const QDBusConnection &connection) {
        isShown.reset();
        showInFileManager(connection, QStringLiteral("/home/kim/a b.deb"),
                          [&](bool result) { isShown = result; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return isShown.has_value(); }));
        return isShown;
    };
    EXPECT_EQ(show(QDBusConnection(QStringLiteral("none"))), false) << "no bus";
    EXPECT_EQ(show(bus.connection()), false) << "no file manager";

    FakeFileManager manager;
    QDBusConnection service = bus.connection();
    service.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &manager,
                           QDBusConnection::ExportAllSlots);
    ASSERT_TRUE(service.registerService(QStringLiteral("org.freedesktop.FileManager1")));
    EXPECT_EQ(show(bus.connection()), true);
    EXPECT_EQ(manager.shown, QStringList(QStringLiteral("file:///home/kim/a%20b.deb")));
}

} // namespace kelo

#include "PackageOpenerTests.moc"
