// What libecal needs for a day of the desktop's own calendar, the server's start included. Prints one line
// each: how many occurrences there are; the seconds from opening the calendar until they are listed; those of
// asking once more; those from a change of one event until all is listed again.

#include "CalendarEds/EdsWorld.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <libecal/libecal.h>

namespace {

constexpr int rounds = 10;

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
    // This process outlives its bus.
    GDBusConnection *bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    check(error);
    g_dbus_connection_set_exit_on_close(bus, FALSE);
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

/// A day of a person with one calendar.
struct Listing
{
    time_t from = 0;
    time_t to = 0;

    long occurrences(ECalClient *client) const
    {
        long count = 0;
        e_cal_client_generate_instances_sync(client, from, to, nullptr, countOccurrence, &count);
        return count;
    }
};

void changeTitle(ECalClient *client, int number)
{
    GError *error = nullptr;
    ICalComponent *event = nullptr;
    e_cal_client_get_object_sync(client, "0000040-4f1c-9d2e@calendar.example.com", nullptr, &event, nullptr,
                                 &error);
    check(error);
    i_cal_component_set_summary(event, std::to_string(number).c_str());
    e_cal_client_modify_object_sync(client, event, E_CAL_OBJ_MOD_ALL, E_CAL_OPERATION_FLAG_NONE, nullptr,
                                    &error);
    check(error);
    g_object_unref(event);
}

double seconds(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) * 1e-9;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::cerr << argv[0] << " FILE FROM TO\n";
        return 2;
    }
    const QString file = QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[1]));
    const Listing listing{std::atol(argv[2]), std::atol(argv[3])};
    const support::EdsWorld world;
    const QString folder = world.path(QStringLiteral("data/evolution/calendar/system"));
    QDir().mkpath(folder);
    QFile::copy(file, folder + QStringLiteral("/calendar.ics"));

    ECalClient *client = nullptr;
    long count = 0;
    const double load = seconds([&] {
        client = openCalendar();
        count = listing.occurrences(client);
    });
    double refresh = 0;
    double change = 0;
    for (int round = 0; round < rounds; ++round) {
        refresh += seconds([&] { listing.occurrences(client); });
        change += seconds([&] {
            changeTitle(client, round);
            listing.occurrences(client);
        });
    }
    std::cout << count << '\n' << load << '\n' << refresh / rounds << '\n' << change / rounds << '\n';
    return 0;
}
