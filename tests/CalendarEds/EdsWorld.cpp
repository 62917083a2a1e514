#include "CalendarEds/EdsWorld.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QThread>
#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace support {

namespace {

const QString systemServices = QStringLiteral("/usr/share/dbus-1/services/");
const QString names[] = {QStringLiteral("org.gnome.evolution.dataserver.AddressBook10"),
                         QString::fromLatin1(EdsWorld::calendarName),
                         QString::fromLatin1(EdsWorld::sourcesName)};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        throw std::runtime_error("can't write " + path.toStdString());
}

std::vector<pid_t> childrenOf(pid_t parent)
{
    std::vector<pid_t> children;
    const QByteArray list = contentOf(QStringLiteral("/proc/%1/task/%1/children").arg(parent));
    for (const QByteArray &process : list.simplified().split(' '))
        if (!process.isEmpty())
            children.push_back(process.toInt());
    return children;
}

bool waitForEnd(pid_t process)
{
    for (int waited = 0; waited < 300; ++waited) {
        if (kill(process, 0) != 0)
            return true;
        QThread::msleep(10);
    }
    return false;
}

} // namespace

bool EdsWorld::isInstalled()
{
    return PrivateBus::isInstalled() &&
           std::all_of(std::begin(names), std::end(names), [](const QString &name) {
               return QFile::exists(systemServices + name + QStringLiteral(".service"));
           });
}

EdsWorld::EdsWorld(const Setup &setup)
{
    const std::pair<const char *, const char *> folders[] = {
        {"HOME", "home"},
        {"XDG_CONFIG_HOME", "config"},
        {"XDG_DATA_HOME", "data"},
        {"XDG_CACHE_HOME", "cache"},
        {"XDG_STATE_HOME", "state"},
        {"XDG_RUNTIME_DIR", "run"},
    };
    for (const auto &[variable, folder] : folders) {
        const QString path = m_home.filePath(QString::fromLatin1(folder));
        QDir().mkpath(path);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(variable, QFile::encodeName(path));
    }
    // No services of GNOME's but those of the test.
    qputenv("GIO_USE_VFS", "local");
    qputenv("GSETTINGS_BACKEND", "memory");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    writeServices(setup.wrapper);
    m_bus = std::make_unique<PrivateBus>(m_home.filePath(QStringLiteral("services")), setup.busRules);
    m_bus->enter();
    m_connection = std::make_unique<QDBusConnection>(m_bus->connection());
}

EdsWorld::~EdsWorld()
{
    const std::vector<pid_t> servers = processes();
    for (const pid_t process : servers)
        kill(process, SIGCONT);
    m_connection.reset();
    m_bus.reset();
    for (const pid_t process : servers) {
        if (!waitForEnd(process))
            kill(process, SIGKILL);
    }
}

void EdsWorld::writeSource(const QString &id, const QByteArray &text) const
{
    write(m_home.filePath(QStringLiteral("config/evolution/sources/") + id + QStringLiteral(".source")),
          text);
}

void EdsWorld::writeServices(const QString &wrapper) const
{
    const QString folder = m_home.filePath(QStringLiteral("services"));
    for (const QString &name : names) {
        QByteArray service = contentOf(systemServices + name + QStringLiteral(".service"));
        service.replace("Exec=", QByteArray("Exec=" + wrapper.toUtf8() + ' '));
        write(folder + QLatin1Char('/') + name + QStringLiteral(".service"), service);
    }
}

std::optional<pid_t> EdsWorld::processOf(const char *name) const
{
    const QDBusReply<uint> reply = m_connection->interface()->servicePid(QString::fromLatin1(name));
    return reply.isValid() ? std::optional(pid_t(reply.value())) : std::nullopt;
}

std::vector<pid_t> EdsWorld::processes() const
{
    std::vector<pid_t> found;
    for (const QString &name : names) {
        const auto process = processOf(name.toLatin1().constData());
        if (!process)
            continue;
        found.push_back(*process);
        const std::vector<pid_t> children = childrenOf(*process);
        found.insert(found.end(), children.begin(), children.end());
    }
    return found;
}

} // namespace support
