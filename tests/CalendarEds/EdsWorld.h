#pragma once

#include "Calendar/CalendarFolder.h"
#include "CalendarEds/plugin/Glib.h"
#include "support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <algorithm>
#include <csignal>
#include <libecal/libecal.h>
#include <map>
#include <stdexcept>

namespace support {

/// Calls a function of GLib's, which takes an error last.
template<typename Function, typename... Arguments> auto called(Function function, Arguments... arguments)
{
    GError *error = nullptr;
    const auto result = function(arguments..., nullptr, &error);
    if (const mivora::GlibError owner(error); error)
        throw std::runtime_error(error->message);
    return result;
}

/// The real Evolution Data Server, on a bus and in a home of its own. There is one for a whole process:
/// libraries keep their connection to the session bus, and remember where the home is.
class EdsWorld final
{
public:
    static constexpr const char *sourcesName = "org.gnome.evolution.dataserver.Sources5";
    static constexpr const char *services[] = {"org.gnome.evolution.dataserver.Calendar8", sourcesName};

    /// Whether it can be run here.
    static bool isInstalled()
    {
        return std::all_of(std::begin(services), std::end(services),
                           [](const char *name) { return std::filesystem::exists(serviceFile(name)); });
    }

    /// Becomes the environment of this process and of those that it starts. `sources` are calendars beside
    /// the server's own "system-calendar", by identifier, as it stores them.
    explicit EdsWorld(const std::map<std::string, std::string> &sources = {})
    {
        for (const char *folder : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME",
                                   "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
            m_home.makeFolder(folder);
            qputenv(folder, QByteArray::fromStdString(path(folder)));
        }
        // No services of GNOME's but those of the test.
        qputenv("GIO_USE_VFS", "local");
        qputenv("GSETTINGS_BACKEND", "memory");
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
        for (const auto &[id, text] : sources)
            m_home.write("XDG_CONFIG_HOME/evolution/sources/" + id + ".source", text);
        for (const char *name : services) {
            std::ifstream file(serviceFile(name));
            std::string text(std::istreambuf_iterator<char>(file), {});
            text.insert(text.find("Exec=") + 5, "/bin/sh " + path("start") + ' ');
            m_home.write(std::string("services/") + name + ".service", text);
        }
        setStart("exec \"$@\"");
        m_bus = std::make_unique<PrivateBus>(QString::fromStdString(path("services")));
        m_bus->enter();
        m_connection = m_bus->connection();
        // Else GLib ends the process with the bus.
        m_session.reset(called(g_bus_get_sync, G_BUS_TYPE_SESSION));
        g_dbus_connection_set_exit_on_close(m_session.get(), FALSE);
    }

    ~EdsWorld() { signalAll(SIGKILL); }

    Q_DISABLE_COPY_MOVE(EdsWorld)

    std::string path(const std::string &relative) const { return m_home.path(relative); }

    PrivateBus &bus() { return *m_bus; }

    /// Has the server's programs started by a script of the shell, where "$@" is the command.
    void setStart(const std::string &script) const { m_home.write("start", script); }

    /// Sends `signal` to every process of the server; returns how many there are.
    std::size_t signalAll(int signal) const
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

    mivora::GlibObject<ESource> source(const char *id) const
    {
        const mivora::GlibObject<ESourceRegistry> registry(called(e_source_registry_new_sync));
        return mivora::GlibObject<ESource>(e_source_registry_ref_source(registry.get(), id));
    }

    mivora::GlibObject<ECalClient> client(const char *calendar) const
    {
        const mivora::GlibObject<ESource> opened = source(calendar);
        return mivora::GlibObject<ECalClient>(E_CAL_CLIENT(
            called(e_cal_client_connect_sync, opened.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, G_MAXUINT32)));
    }

    /// The server takes in the events and time zones of a VCALENDAR, as another program would have it do.
    /// Waits for it, and throws std::runtime_error when it refuses.
    void import(const char *calendar, const std::string &text) const
    {
        const mivora::GlibObject<ICalComponent> events(i_cal_component_new_from_string(text.c_str()));
        // As one that is published, whatever it was sent as.
        i_cal_component_set_method(events.get(), I_CAL_METHOD_PUBLISH);
        called(e_cal_client_receive_objects_sync, client(calendar).get(), events.get(),
               E_CAL_OPERATION_FLAG_NONE);
    }

private:
    /// How the system starts the server's program behind `name`.
    static std::string serviceFile(const char *name)
    {
        return std::string("/usr/share/dbus-1/services/") + name + ".service";
    }

    mivora::CalendarFolder m_home;
    mivora::GlibObject<GDBusConnection> m_session;
    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_connection{QString()};
};

} // namespace support
