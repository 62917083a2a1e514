#include "CalendarEds/EdsWorld.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QDir>
#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace support {

namespace {

using mivora::GlibObject;

const QString services[] = {QString::fromLatin1(EdsWorld::calendarName),
                            QString::fromLatin1(EdsWorld::sourcesName)};

QString serviceFile(const QString &name)
{
    return QStringLiteral("/usr/share/dbus-1/services/%1.service").arg(name);
}

void write(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        throw std::runtime_error("can't write " + path.toStdString());
}

/// Calls a function of GLib's, which takes an error last.
template<typename Function, typename... Arguments> auto called(Function function, Arguments... arguments)
{
    GError *error = nullptr;
    const auto result = function(arguments..., nullptr, &error);
    if (const mivora::GlibError owner(error); error)
        throw std::runtime_error(error->message);
    return result;
}

} // namespace

bool EdsWorld::isInstalled()
{
    return PrivateBus::isInstalled() &&
           std::all_of(std::begin(services), std::end(services),
                       [](const QString &name) { return QFile::exists(serviceFile(name)); });
}

EdsWorld::EdsWorld(const std::map<QString, QByteArray> &sources)
{
    for (const char *folder : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME",
                               "XDG_RUNTIME_DIR"}) {
        QDir().mkpath(path(QLatin1String(folder)));
        qputenv(folder, QFile::encodeName(path(QLatin1String(folder))));
    }
    // No services of GNOME's but those of the test.
    qputenv("GIO_USE_VFS", "local");
    qputenv("GSETTINGS_BACKEND", "memory");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
    for (const auto &[id, text] : sources)
        write(path(QStringLiteral("XDG_CONFIG_HOME/evolution/sources/%1.source").arg(id)), text);
    const QByteArray start = "Exec=/bin/sh " + path(QStringLiteral("start ")).toUtf8();
    for (const QString &name : services) {
        QFile file(serviceFile(name));
        file.open(QIODevice::ReadOnly);
        write(path(QStringLiteral("services/%1.service").arg(name)), file.readAll().replace("Exec=", start));
    }
    setStart("exec \"$@\"");
    m_bus = std::make_unique<PrivateBus>(path(QStringLiteral("services")));
    m_bus->enter();
    m_connection = m_bus->connection();
    // Else GLib ends the process with the bus.
    const GlibObject<GDBusConnection> session(called(g_bus_get_sync, G_BUS_TYPE_SESSION));
    g_dbus_connection_set_exit_on_close(session.get(), FALSE);
}

EdsWorld::~EdsWorld()
{
    signalAll(SIGKILL);
}

void EdsWorld::setStart(const QByteArray &script) const
{
    write(path(QStringLiteral("start")), script);
}

std::size_t EdsWorld::signalAll(int signal) const
{
    QDBusConnectionInterface *names = m_connection.interface();
    std::size_t count = 0;
    for (const QString &name : names->registeredServiceNames().value()) {
        const QDBusReply<uint> process = names->servicePid(name);
        if (name.startsWith(QLatin1String("org.gnome.evolution.dataserver.")) && process.isValid())
            count += kill(pid_t(process.value()), signal) == 0;
    }
    return count;
}

GlibObject<ESource> EdsWorld::source(const char *id) const
{
    const GlibObject<ESourceRegistry> registry(called(e_source_registry_new_sync));
    return GlibObject<ESource>(e_source_registry_ref_source(registry.get(), id));
}

GlibObject<ECalClient> EdsWorld::client(const char *calendar) const
{
    const GlibObject<ESource> opened = source(calendar);
    return GlibObject<ECalClient>(E_CAL_CLIENT(
        called(e_cal_client_connect_sync, opened.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, G_MAXUINT32)));
}

void EdsWorld::import(const char *calendar, const std::string &text) const
{
    const GlibObject<ICalComponent> events(i_cal_component_new_from_string(text.c_str()));
    // As one that is published, whatever it was sent as.
    i_cal_component_set_method(events.get(), I_CAL_METHOD_PUBLISH);
    called(e_cal_client_receive_objects_sync, client(calendar).get(), events.get(),
           E_CAL_OPERATION_FLAG_NONE);
}

} // namespace support
