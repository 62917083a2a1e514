#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <benchmark/benchmark.h>

namespace {

/// Stands for a panel: hears of the item that a program shows.
class Watcher final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")

public:
    explicit Watcher(QDBusConnection bus)
    {
        bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this, QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    }

    int items = 0;

public Q_SLOTS:

    void RegisterStatusNotifierItem(const QString &) { ++items; }
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// In seconds, of all threads (proc(5), schedstat).
double processorTime(qint64 process)
{
    constexpr double nanoseconds = 1e-9;
    double sum = 0;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(process));
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        sum += contentOf(tasks.filePath(task + QStringLiteral("/schedstat"))).split(' ').value(0).toDouble();
    return sum * nanoseconds;
}

/// A value of /proc/PID/smaps_rollup in kB.
double memory(qint64 process, const char *name)
{
    for (const QByteArray &line :
         contentOf(QStringLiteral("/proc/%1/smaps_rollup").arg(process)).split('\n')) {
        if (line.startsWith(name))
            return line.simplified().split(' ').value(1).toDouble();
    }
    return 0;
}

void spendTime(const std::function<bool()> &isOver, int milliseconds)
{
    QElapsedTimer timer;
    for (timer.start(); !isOver() && timer.elapsed() < milliseconds;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
}

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
        info.write("{\"SUFeedURL\": \"https://localhost:1/appcast.xml\", \"SUPublicEDKey\": \"" +
                   QByteArray(32, 'k').toBase64() + "\"}");
}

QProcessEnvironment environmentIn(const QTemporaryDir &home, const support::PrivateBus &bus)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home.path());
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
        environment.insert(QLatin1String(name), home.path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromLatin1(bus.address()));
    return environment;
}

void startAndRest(benchmark::State &state, bool hasFeed)
{
    const QTemporaryDir prefix;
    const QTemporaryDir home;
    install(QDir(prefix.path()), hasFeed);
    const QString program = prefix.filePath(QStringLiteral("bin/mivora"));
    support::PrivateBus bus;
    Watcher watcher(bus.connection());
    const QProcessEnvironment environment = environmentIn(home, bus);
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
        state.SetIterationTime(processorTime(process.processId()));
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

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

#include "UpdatesAtStart.moc"
