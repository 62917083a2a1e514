#pragma once

#include "CalendarEds/plugin/Glib.h"
#include "support/PrivateBus.h"

#include <QTemporaryDir>
#include <libecal/libecal.h>
#include <map>

namespace support {

/// The real Evolution Data Server, on a bus and in a home of its own. There is one for a whole process:
/// libraries keep their connection to the session bus, and remember where the home is.
class EdsWorld final
{
public:
    static constexpr const char *calendarName = "org.gnome.evolution.dataserver.Calendar8";
    static constexpr const char *sourcesName = "org.gnome.evolution.dataserver.Sources5";

    /// Whether it can be run here.
    static bool isInstalled();

    /// Becomes the environment of this process and of those that it starts. `sources` are calendars beside
    /// the server's own "system-calendar", by identifier, as it stores them.
    explicit EdsWorld(const std::map<QString, QByteArray> &sources = {});
    ~EdsWorld();
    Q_DISABLE_COPY_MOVE(EdsWorld)

    QString path(const QString &relative) const { return m_home.filePath(relative); }

    PrivateBus &bus() { return *m_bus; }

    /// Has the server's programs started by a script of the shell, where "$@" is the command.
    void setStart(const QByteArray &script) const;

    /// Sends `signal` to every process of the server; returns how many there are.
    std::size_t signalAll(int signal) const;

    mivora::GlibObject<ESource> source(const char *id) const;
    mivora::GlibObject<ECalClient> client(const char *calendar) const;

    /// The server takes in the events and time zones of a VCALENDAR, as another program would have it do.
    /// Waits for it, and throws std::runtime_error when it refuses.
    void import(const char *calendar, const std::string &text) const;

private:
    QTemporaryDir m_home;
    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_connection{QString()};
};

} // namespace support
