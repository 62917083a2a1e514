#include "KeloSparkle/PackageOpener.h"

#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
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

/// The user's folders, in which one program opens packages: it writes its arguments into a file.
class Desktop final
{
public:
    Desktop()
    {
        const QString program = path("record");
        write("record", "#!/bin/sh\nprintf '%s\\n' \"$@\" >\"" + path("tmp").toUtf8() + "\"\nmv \"" +
                            path("tmp").toUtf8() + "\" \"" + path("opened").toUtf8() + "\"\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
        // What the package is called depends on the system's list of types.
        const QByteArray types[] = {"application/vnd.debian.binary-package", "application/x-debian-package",
                                    "application/octet-stream", "text/plain"};
        QByteArray defaults = "[Default Applications]\n";
        for (const QByteArray &type : types)
            defaults += type + "=recorder.desktop\n";
        QDir().mkpath(path("applications"));
        write("applications/recorder.desktop",
              "[Desktop Entry]\nType=Application\nName=Recorder\nExec=" + program.toUtf8() +
                  " %f\nMimeType=" + QByteArrayList(std::begin(types), std::end(types)).join(';') + ";\n");
        write("mimeapps.list", defaults);
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        qputenv("XDG_DATA_HOME", m_folder.path().toUtf8());
        // The programs of the machine stay out of it.
        qputenv("XDG_DATA_DIRS", path("none").toUtf8());
        qputenv("XDG_CONFIG_DIRS", path("none").toUtf8());
    }

    QString path(const char *name) const { return m_folder.filePath(QString::fromUtf8(name)); }

    void write(const char *name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(content);
    }

    QString opened() const
    {
        QFile file(path("opened"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
    }

private:
    QTemporaryDir m_folder;
};

void wait(const std::function<bool()> &isOver)
{
    QElapsedTimer timer;
    for (timer.start(); !isOver() && timer.elapsed() < 10'000;)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

} // namespace

TEST(PackageOpenerTests, theDesktopsProgramGetsThePackage)
{
    const Desktop desktop;
    const char *name = "a %20 & 'b'.deb";
    desktop.write(name, "!<arch>\ndebian-binary   ");
    std::optional<bool> isOpen;
    openPackage(desktop.path(name), [&](bool result) { isOpen = result; });
    EXPECT_FALSE(isOpen) << "it is said later";
    wait([&] { return isOpen && !desktop.opened().isEmpty(); });
    EXPECT_EQ(isOpen, true);
    EXPECT_EQ(desktop.opened(), desktop.path(name));

    QFile::remove(desktop.path("mimeapps.list"));
    isOpen.reset();
    desktop.write("picture.nobody-opens-this", QByteArray("\0\1\2\3", 4));
    QFile::remove(desktop.path("applications/recorder.desktop"));
    openPackage(desktop.path("picture.nobody-opens-this"), [&](bool result) { isOpen = result; });
    wait([&] { return isOpen.has_value(); });
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
        wait([&] { return isShown.has_value(); });
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
