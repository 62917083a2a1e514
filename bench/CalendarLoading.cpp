#include "Calendar/EventKitSource.h"
#include "Calendar/LoadWait.h"
#include "Calendar/folder/FolderStore.h"
#include "CalendarSamples.h"

#include <QCoreApplication>
#include <QTimeZone>
#include <benchmark/benchmark.h>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <libical/ical.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace mivora;

namespace {

using MakeFolder = std::string (*)(int count);

constexpr Timestamp now = timestampFromSeconds(1773136800); // 2026-03-10, 10:00 UTC

std::unique_ptr<FolderStore> loadedStore(const std::string &root)
{
    FolderStore::Setup setup{{root}, windowAround(now, QTimeZone("Europe/Berlin")), {"ann@example.com"}};
    auto store = std::make_unique<FolderStore>(std::move(setup));
    waitUntilLoaded(*store, std::chrono::minutes(1));
    return store;
}

/// Hands every calendar file of a folder to \a use, in the plainest way there is.
template<typename Use> void readPlainly(const std::string &folder, Use use)
{
    std::string text;
    DIR *stream = ::opendir(folder.c_str());
    while (const dirent *entry = ::readdir(stream)) {
        if (!std::string_view(entry->d_name).ends_with(".ics"))
            continue;
        const int file = ::openat(::dirfd(stream), entry->d_name, O_RDONLY | O_CLOEXEC);
        struct stat status;
        ::fstat(file, &status);
        if (text.size() < std::size_t(status.st_size) + 1)
            text.resize(std::size_t(status.st_size) + 1);
        const ssize_t length = ::read(file, text.data(), std::size_t(status.st_size));
        text[std::size_t(length)] = '\0';
        ::close(file);
        use(text.c_str(), std::size_t(length));
    }
    ::closedir(stream);
}

void countOccurrence(icalcomponent *, icaltime_span *, void *count)
{
    ++*static_cast<std::int64_t *>(count);
}

std::int64_t expandPlainly(const char *text)
{
    std::int64_t count = 0;
    icalcomponent *calendar = icalparser_parse_string(text);
    const icaltimetype from = icaltime_from_timet_with_zone(1773010800, 0, icaltimezone_get_utc_timezone());
    const icaltimetype to = icaltime_from_timet_with_zone(1773442800, 0, icaltimezone_get_utc_timezone());
    for (icalcomponent *event = icalcomponent_get_first_component(calendar, ICAL_VEVENT_COMPONENT); event;
         event = icalcomponent_get_next_component(calendar, ICAL_VEVENT_COMPONENT))
        icalcomponent_foreach_recurrence(event, from, to, countOccurrence, &count);
    icalcomponent_free(calendar);
    return count;
}

/// The files stay in the page cache between the rounds.
void MerelyRead(benchmark::State &state, MakeFolder makeFolder)
{
    const std::string folder = makeFolder(int(state.range(0))) + "/work";
    std::int64_t bytes = 0;
    for (auto _ : state)
        readPlainly(folder, [&](const char *text, std::size_t length) {
            bytes += std::int64_t(length);
            benchmark::DoNotOptimize(text);
        });
    state.SetBytesProcessed(bytes);
}

void PlainLibical(benchmark::State &state, MakeFolder makeFolder)
{
    const std::string folder = makeFolder(int(state.range(0))) + "/work";
    std::int64_t count = 0;
    for (auto _ : state) {
        count = 0;
        readPlainly(folder, [&](const char *text, std::size_t) { count += expandPlainly(text); });
    }
    state.counters["occurrences"] = double(count);
}

void LoadStore(benchmark::State &state, MakeFolder makeFolder)
{
    const std::string root = makeFolder(int(state.range(0)));
    std::size_t count = 0;
    for (auto _ : state) {
        auto store = loadedStore(root);
        state.PauseTiming();
        count = store->events(now - Seconds(86400), now + Seconds(3 * 86400), std::nullopt).size();
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
    EventKitSource source(loadedStore(samples::folderOfFiles(int(state.range(0)))));
    std::size_t count = 0;
    for (auto _ : state)
        count = source.meetings(now, now + Seconds(14 * 3600), std::nullopt).size();
    state.counters["meetings"] = double(count);
}

/// From the end of writing one file until the store has announced and can give the change.
void OneChangedFile(benchmark::State &state)
{
    const int files = int(state.range(0));
    const std::string root = samples::folderOfFiles(files);
    const auto store = loadedStore(root);
    bool isSeen = false;
    QObject::connect(store.get(), &EventStore::changed, store.get(), [&] { isSeen = true; });
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
    }
}

} // namespace

#define MIVORA_SIZES                                                                                         \
    Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime()->RangeMultiplier(10)

BENCHMARK_CAPTURE(MerelyRead, files, samples::folderOfFiles)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK_CAPTURE(LoadStore, files, samples::folderOfFiles)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK_CAPTURE(PlainLibical, files, samples::folderOfFiles)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK_CAPTURE(MerelyRead, oneFile, samples::folderWithOneFile)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK_CAPTURE(LoadStore, oneFile, samples::folderWithOneFile)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK_CAPTURE(PlainLibical, oneFile, samples::folderWithOneFile)->MIVORA_SIZES->Range(100, 100000);
BENCHMARK(RefreshWithNothingChanged)->MIVORA_SIZES->Arg(10000)->Arg(100000);
BENCHMARK(OneChangedFile)->MIVORA_SIZES->Arg(10000)->Iterations(50);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
