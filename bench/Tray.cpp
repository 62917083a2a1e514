#include "CalendarSamples.h"
#include "StartedProgram.h"
#include "support/PrivateDisplay.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <benchmark/benchmark.h>

namespace mivora {

namespace {

/// A display, a bus with a panel's stand-in, and a home with a thousand events.
class Session final : public QObject
{
    Q_OBJECT

public:
    Session()
        : m_root(m_home.filePath(QStringLiteral("calendars"))), m_watcher(m_bus.connection()),
          m_connection(m_bus.connection()), m_environment(environmentIn(m_home, m_bus))
    {
        QFile::rename(QString::fromStdString(samples::folderOfFiles(1000)), m_root);
        m_environment.insert(QStringLiteral("DISPLAY"), QString::fromLatin1(m_display.name()));
        m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        m_environment.insert(QStringLiteral("MIVORA_CALENDARS"), m_root);
        writeMeeting(0);
        for (const QStringList &preparation :
             {QStringList{QStringLiteral("access"), QStringLiteral("allow")},
              QStringList{QStringLiteral("defaults"), QStringLiteral("write"),
                          QStringLiteral("hasCompletedOnboarding"), QStringLiteral("true")}}) {
            QProcess process;
            start(process, QStringLiteral("mivora"), preparation);
            process.waitForFinished();
        }
        m_connection.connect(QString(), QString(), QStringLiteral("app.kelo.Mivora.Agenda"),
                             QStringLiteral("AgendaChanged"), this, SLOT(countChange()));
    }

    void start(QProcess &process, const QString &program, const QStringList &arguments = {}) const
    {
        process.setProcessEnvironment(m_environment);
        process.start(QCoreApplication::applicationDirPath() + u'/' + program, arguments);
    }

    /// Starts a program and returns when its item is there, or false after 20 s.
    bool startItem(QProcess &process, const QString &program)
    {
        m_watcher.items = 0;
        start(process, program);
        spendTime([this] { return m_watcher.items > 0; }, 20'000);
        return m_watcher.items > 0;
    }

    /// Changes of the agenda are announced from now on.
    void followAgenda() const
    {
        m_connection.call(QDBusMessage::createMethodCall(
            QStringLiteral("app.kelo.Mivora"), QStringLiteral("/app/kelo/Mivora"),
            QStringLiteral("app.kelo.Mivora.Agenda"), QStringLiteral("Agenda")));
    }

    /// Changes today's meeting and returns when the program shows it, or false after 5 s.
    bool changeMeeting(int number)
    {
        const int before = m_changes;
        writeMeeting(number);
        spendTime([&] { return m_changes > before; }, 5000);
        return m_changes > before;
    }

private Q_SLOTS:

    void countChange() { ++m_changes; }

private:
    void writeMeeting(int number) const
    {
        const QByteArray start = QDateTime::currentDateTime()
                                     .addSecs(3600)
                                     .toUTC()
                                     .toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"))
                                     .toLatin1();
        QFile file(m_root + QStringLiteral("/work/today.ics"));
        if (file.open(QIODevice::WriteOnly))
            file.write("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VEVENT\r\nUID:today\r\nSUMMARY:Meeting " +
                       QByteArray::number(number) + "\r\nDTSTART:" + start +
                       "\r\nDURATION:PT10M\r\nURL:https://zoom.us/j/1\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    }

    support::PrivateDisplay m_display;
    support::PrivateBus m_bus;
    QTemporaryDir m_home;
    QString m_root;
    ItemWatcher m_watcher;
    QDBusConnection m_connection;
    QProcessEnvironment m_environment;
    int m_changes = 0;
};

Session &session()
{
    static Session shared;
    return shared;
}

// The processor's time up to the registration of the item; memory as it is two seconds later.
void start(benchmark::State &state, const char *program)
{
    double resident = 0;
    for (auto _ : state) {
        QProcess process;
        if (!session().startItem(process, QLatin1String(program)))
            return state.SkipWithError("no item was registered");
        state.SetIterationTime(processorTime(process.processId()));
        spendTime([] { return false; }, 2000);
        resident += memory(process.processId(), "Rss:");
        process.kill();
        process.waitForFinished();
    }
    state.counters["rssKB"] = benchmark::Counter(resident, benchmark::Counter::kAvgIterations);
}

// A minute in which nothing happens.
void idle(benchmark::State &state, const char *program)
{
    for (auto _ : state) {
        QProcess process;
        if (!session().startItem(process, QLatin1String(program)))
            return state.SkipWithError("no item was registered");
        // The looking around after the start is over by then.
        spendTime([] { return false; }, 15'000);
        const double wakeUpsBefore = wakeUps(process.processId());
        const double timeBefore = processorTime(process.processId());
        spendTime([] { return false; }, 60'000);
        state.counters["wakeUps"] = wakeUps(process.processId()) - wakeUpsBefore;
        state.SetIterationTime(processorTime(process.processId()) - timeBefore);
        process.kill();
        process.waitForFinished();
    }
}

// The time of one change from the file to the announced agenda, and what many of them leave in memory.
void manyRefreshes(benchmark::State &state)
{
    QProcess process;
    if (!session().startItem(process, QStringLiteral("mivora")))
        return state.SkipWithError("no item was registered");
    session().followAgenda();
    int number = 0;
    constexpr int settling = 100;
    while (number < settling)
        session().changeMeeting(++number);
    const double before = memory(process.processId(), "Rss:");
    for (auto _ : state) {
        if (!session().changeMeeting(++number))
            return state.SkipWithError("a change wasn't noticed");
    }
    state.counters["growthKB"] = memory(process.processId(), "Rss:") - before;
    process.kill();
    process.waitForFinished();
}

BENCHMARK_CAPTURE(start, bare, "bare-tray-item")
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(start, mivora, "mivora")->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(idle, bare, "bare-tray-item")
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(idle, mivora, "mivora")->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(manyRefreshes)->UseRealTime()->Iterations(2000)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace mivora

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

#include "Tray.moc"
