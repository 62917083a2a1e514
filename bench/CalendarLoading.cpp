#include "Calendar/AccessMemory.h"
#include "Calendar/EventKitSource.h"
#include "CalendarFolder/FolderLoader.h"
#include "CalendarSamples.h"
#include "LoadWait.h"

#include <QCoreApplication>
#include <QTimeZone>
#include <benchmark/benchmark.h>
#include <fstream>
#include <sys/resource.h>
#include <thread>

using namespace mivora;

namespace {

using MakeFolder = std::string (*)(int count);

constexpr Timestamp now = timestampFromSeconds(1773136800);  // 2026-03-10, 10:00 UTC
constexpr Timestamp from = timestampFromSeconds(1773097200); // the beginning of that day in Berlin
constexpr Timestamp to = from + Seconds(2 * 86400);

std::unique_ptr<EventKitSource> loadedStore(const std::string &root)
{
    static AccessMemory access(QStringLiteral("/tmp/unused"), AccessMemory::Permission::given);
    EventKitSource::Loaders loaders;
    loaders.push_back(std::make_unique<FolderLoader>(
        FolderLoader::Setup{.roots = {{root}}, .addresses = {"ann@example.com"}}));
    auto store = std::make_unique<EventKitSource>(access, windowAround(now, QTimeZone("Europe/Berlin")),
                                                  std::move(loaders));
    waitUntilLoaded(*store);
    return store;
}

void LoadStore(benchmark::State &state, MakeFolder makeFolder)
{
    const std::string root = makeFolder(int(state.range(0)));
    std::size_t count = 0;
    for (auto _ : state) {
        auto store = loadedStore(root);
        state.PauseTiming();
        count = store->meetings(from, to, std::nullopt).size();
        store.reset();
        state.ResumeTiming();
    }
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    state.counters["occurrences"] = double(count);
    state.counters["peakMB"] = double(usage.ru_maxrss) / 1024;
}

void RefreshWithNothingChanged(benchmark::State &state)
{
    const auto source = loadedStore(samples::folderOfFiles(int(state.range(0))));
    std::size_t count = 0;
    for (auto _ : state)
        count = source->meetings(from, to, std::nullopt).size();
    state.counters["meetings"] = double(count);
}

/// From writing one file until the store has announced the change and given it.
void OneChangedFile(benchmark::State &state)
{
    const int files = int(state.range(0));
    const std::string root = samples::folderOfFiles(files);
    const auto store = loadedStore(root);
    bool isSeen = false;
    QObject::connect(store.get(), &EventKitSource::changed, store.get(), [&] { isSeen = true; });
    const std::string path = root + "/work/0000040-4f1c-9d2e.ics";
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        std::string text = samples::eventFile(40);
        text.insert(text.find("SUMMARY:") + 8, std::to_string(++round));
        isSeen = false;
        state.ResumeTiming();
        std::ofstream(path) << text;
        while (!isSeen)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        benchmark::DoNotOptimize(store->meetings(from, to, std::nullopt).size());
    }
}

} // namespace

#define MIVORA_SIZES                                                                                         \
    Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime()->RangeMultiplier(10)

BENCHMARK_CAPTURE(LoadStore, files, samples::folderOfFiles)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK_CAPTURE(LoadStore, oneFile, samples::folderWithOneFile)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK(RefreshWithNothingChanged)->MIVORA_SIZES->Arg(10000)->Arg(100000);
BENCHMARK(OneChangedFile)->MIVORA_SIZES->Arg(10000)->Iterations(50);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
