// What libecal needs for a day of the desktop's own calendar, from a server that runs but has not read it
// yet. Prints how many occurrences there are, and the seconds from opening the calendar until they are
// listed.

#include "CalendarEds/EdsWorld.h"

#include <QDBusConnectionInterface>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdlib>
#include <iostream>

namespace {

/// Ends the program with the server's word about what went wrong.
void check(const GError *error)
{
    if (!error)
        return;
    std::cerr << error->message << '\n';
    std::exit(1);
}

ECalClient *openCalendar()
{
    GError *error = nullptr;
    ESourceRegistry *registry = e_source_registry_new_sync(nullptr, &error);
    check(error);
    ESource *source = e_source_registry_ref_source(registry, "system-calendar");
    // Not waiting for the word that the calendar is online: what is on disk is there at once.
    EClient *client =
        e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, guint32(-1), nullptr, &error);
    check(error);
    return E_CAL_CLIENT(client);
}

gboolean countOccurrence(ICalComponent *, ICalTime *, ICalTime *, gpointer count, GCancellable *, GError **)
{
    ++*static_cast<long *>(count);
    return TRUE;
}

long occurrences(ECalClient *client, time_t from, time_t to)
{
    long count = 0;
    e_cal_client_generate_instances_sync(client, from, to, nullptr, countOccurrence, &count);
    return count;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::cerr << argv[0] << " FILE FROM TO\n";
        return 2;
    }
    const QString file = QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[1]));
    const support::EdsWorld world;
    const QString folder = QString::fromStdString(world.path("XDG_DATA_HOME/evolution/calendar/system"));
    QDir().mkpath(folder);
    QFile::copy(file, folder + QStringLiteral("/calendar.ics"));

    // On most desktops something has asked for calendars before, though not for this one.
    for (const char *server : support::EdsWorld::services)
        QDBusConnection::sessionBus().interface()->startService(QString::fromLatin1(server));

    QElapsedTimer timer;
    timer.start();
    const long count = occurrences(openCalendar(), std::atol(argv[2]), std::atol(argv[3]));
    std::cout << count << '\n' << double(timer.nsecsElapsed()) * 1e-9 << '\n';
    return 0;
}
