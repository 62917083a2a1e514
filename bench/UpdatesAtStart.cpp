#include "StartedProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <benchmark/benchmark.h>

namespace mivora {

namespace {

/// The program as it is installed: it finds its information dictionary beside its own folder.
void install(const QDir &prefix, bool hasFeed)
{
    const QDir built(QCoreApplication::applicationDirPath());
    prefix.mkpath(QStringLiteral("bin"));
    prefix.mkpath(QStringLiteral("share/mivora"));
    QFile::copy(built.filePath(QStringLiteral("mivora")), prefix.filePath(QStringLiteral("bin/mivora")));
    QFile::link(built.filePath(QStringLiteral("../lib")), prefix.filePath(QStringLiteral("lib")));
    QFile info(prefix.filePath(QStringLiteral("share/mivora/info.json")));
    if (hasFeed && info.open(QIODevice::WriteOnly))
        info.write("{\"SUFeedURL\": \"https://localhost:1/updates.json\", \"SUPublicEDKey\": \"" +
                   QByteArray(32, 'k').toBase64() + "\"}");
}

void startAndRest(benchmark::State &state, bool hasFeed)
{
    const QTemporaryDir prefix;
    const QTemporaryDir home;
    install(QDir(prefix.path()), hasFeed);
    const QString program = prefix.filePath(QStringLiteral("bin/mivora"));
    support::PrivateBus bus;
    ItemWatcher watcher(bus.connection());
    QProcessEnvironment environment = environmentIn(home, bus);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    const auto run = [&](QProcess &process, const QStringList &arguments) {
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
    };
    QProcess preparation;
    run(preparation, {QStringLiteral("defaults"), QStringLiteral("write"),
                      QStringLiteral("hasCompletedOnboarding"), QStringLiteral("true")});
    preparation.waitForFinished();

    double resident = 0;
    double own = 0;
    bool hasEngine = false;
    for (auto _ : state) {
        watcher.items = 0;
        QProcess process;
        run(process, {});
        spendTime([&] { return watcher.items > 0; }, 20'000);
        if (watcher.items == 0)
            return state.SkipWithError("no item was registered");
        state.SetIterationTime(sumSince({}, processorTime(process.processId())));
        spendTime([] { return false; }, 2000);
        resident += memory(process.processId(), "Rss:");
        own += memory(process.processId(), "Private_Dirty:");
        const QByteArray maps = contentOf(QStringLiteral("/proc/%1/maps").arg(process.processId()));
        hasEngine = hasEngine || maps.contains("mivora-updates") || maps.contains("libQt6Network");
        process.kill();
        process.waitForFinished();
    }
    state.counters["rssKB"] = benchmark::Counter(resident, benchmark::Counter::kAvgIterations);
    state.counters["privateKB"] = benchmark::Counter(own, benchmark::Counter::kAvgIterations);
    state.counters["engineLoaded"] = hasEngine;
}

// The time is the processor's, up to the registration of the item; the memory is that of two seconds later.
BENCHMARK_CAPTURE(startAndRest, withoutFeed, false)
    ->UseManualTime()
    ->Iterations(5)
    ->Repetitions(5)
    ->ReportAggregatesOnly()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startAndRest, withFeed, true)
    ->UseManualTime()
    ->Iterations(5)
    ->Repetitions(5)
    ->ReportAggregatesOnly()
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace mivora

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
