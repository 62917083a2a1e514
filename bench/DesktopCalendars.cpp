#include "Calendar/AccessMemory.h"
#include "Calendar/EventKitSource.h"
#include "CalendarEds/DesktopLoader.h"
#include "CalendarEds/EdsWorld.h"
#include "CalendarSamples.h"
#include "LoadWait.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTimeZone>
#include <benchmark/benchmark.h>
#include <fstream>
#include <iostream>
#include <sstream>
#include <unistd.h>

using namespace mivora;

namespace {

constexpr Timestamp now = timestampFromSeconds(1773136800); // 2026-03-10, 10:00 UTC

/// A server with one large calendar.
struct Desktop
{
    Desktop()
    {
        std::ifstream file(samples::folderWithOneFile(10000) + "/work/all.ics");
        std::stringstream text;
        text << file.rdbuf();
        world.import(calendar, text.str());
    }

    static constexpr const char *calendar = "system-calendar";
    support::EdsWorld world;
};

Desktop *desktop = nullptr;

double residentMegabytes()
{
    std::ifstream file("/proc/self/statm");
    long size = 0, resident = 0;
    file >> size >> resident;
    return double(resident) * double(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

std::unique_ptr<EventKitSource> startedStore()
{
    static AccessMemory access(QStringLiteral("/tmp/unused"), AccessMemory::Permission::given);
    EventKitSource::Loaders loaders;
    loaders.push_back(std::make_unique<DesktopLoader>(
        DesktopLoader::Setup{.bus = QDBusConnection::sessionBus(), .addresses = {"ann@example.com"}}));
    return std::make_unique<EventKitSource>(access, windowAround(now, QTimeZone("Europe/Berlin")),
                                            std::move(loaders));
}

std::unique_ptr<EventKitSource> loadedStore()
{
    auto store = startedStore();
    waitUntilLoaded(*store);
    return store;
}

/// From nothing to all occurrences in memory; the server runs already.
void Load(benchmark::State &state)
{
    const double before = residentMegabytes();
    std::size_t count = 0;
    for (auto _ : state) {
        auto store = loadedStore();
        state.PauseTiming();
        count = store->meetings(now - Seconds(86400), now + Seconds(3 * 86400), std::nullopt).size();
        state.counters["residentMB"] = residentMegabytes() - before;
        store.reset();
        state.ResumeTiming();
    }
    state.counters["occurrences"] = double(count);
}

void RefreshWithNothingChanged(benchmark::State &state)
{
    const auto source = loadedStore();
    std::size_t count = 0;
    for (auto _ : state)
        count = source->meetings(now, now + Seconds(14 * 3600), std::nullopt).size();
    state.counters["meetings"] = double(count);
}

std::string changedEvent(int version)
{
    std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:changing\r\nDTSTAMP:"
                       "20260101T000000Z\r\nDTSTART:20260310T120000Z\r\n";
    return text.append("DURATION:PT1H\r\nSUMMARY:")
        .append(std::to_string(version))
        .append("\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
}

/// From the server's confirmation of another program's change until the store can give it.
void OneChange(benchmark::State &state)
{
    static int version = 0;
    const auto store = loadedStore();
    const auto isSeen = [&] {
        for (const auto &event : store->meetings(now, now + Seconds(14 * 3600), std::nullopt))
            if (event.title == std::to_string(version))
                return true;
        return false;
    };
    for (auto _ : state) {
        desktop->world.import(desktop->calendar, changedEvent(++version));
        QElapsedTimer timer;
        timer.start();
        while (!isSeen())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        state.SetIterationTime(double(timer.nsecsElapsed()) * 1e-9);
    }
}

/// The longest that the main thread was away from its events while a store loads.
void LongestPauseWhileLoading(benchmark::State &state)
{
    double longest = 0;
    for (auto _ : state) {
        auto store = startedStore();
        while (!store->isLoaded()) {
            QElapsedTimer timer;
            timer.start();
            QCoreApplication::processEvents();
            longest = std::max(longest, double(timer.nsecsElapsed()) * 1e-6);
            usleep(200);
        }
    }
    state.counters["longest_ms"] = longest;
}

BENCHMARK(Load)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LongestPauseWhileLoading)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(RefreshWithNothingChanged)->Unit(benchmark::kMicrosecond);
BENCHMARK(OneChange)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(50);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (!support::EdsWorld::isInstalled()) {
        std::cerr << "Evolution Data Server is not installed\n";
        return 0;
    }
    Desktop made;
    desktop = &made;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
