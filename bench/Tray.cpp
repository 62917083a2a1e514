#include "CalendarSamples.h"
#include "StartedProgram.h"
#include "support/PrivateDisplay.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <benchmark/benchmark.h>
#include <memory>

namespace mivora {

namespace {

/// A program that shows an item; the applets may not be built.
struct Program
{
    const char *name;
    QString command;
    QStringList arguments = {};
};

QString built(const char *name)
{
    return QCoreApplication::applicationDirPath() + u'/' + QLatin1String(name);
}

const std::vector<Program> &programs()
{
    static const std::vector<Program> all = {
        {"mivora", built("mivora")},
        {"bareQt", built("bare-tray-item")},
        {"qtWidgets", built("../peers/tray-qt")},
        {"gtk", built("../peers/tray-gtk")},
    };
    return all;
}

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
            start(process, {"mivora", built("mivora"), preparation});
            process.waitForFinished();
        }
        m_connection.connect(QString(), QString(), QStringLiteral("app.kelo.Mivora.Agenda"),
                             QStringLiteral("AgendaChanged"), this, SLOT(countChange()));
    }

    void start(QProcess &process, const Program &program) const
    {
        process.setProcessEnvironment(m_environment);
        process.start(program.command, program.arguments);
    }

    /// Starts a program and returns when its item is there, or false when it has ended before, or after 20 s.
    bool startItem(QProcess &process, const Program &program)
    {
        m_watcher.items = 0;
        start(process, program);
        spendTime([&] { return m_watcher.items > 0 || process.state() == QProcess::NotRunning; }, 20'000);
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

void end(QProcess &process)
{
    process.kill();
    process.waitForFinished();
}

// Up to the registration of the item, by the clock and on the processor.
void start(benchmark::State &state, const Program &program)
{
    for (auto _ : state) {
        QProcess process;
        QElapsedTimer timer;
        timer.start();
        if (!session().startItem(process, program))
            return state.SkipWithError("no item was registered");
        state.SetIterationTime(double(timer.nsecsElapsed()) * 1e-9);
        state.counters["processor_ms"] = sumSince({}, processorTime(process.processId())) * 1e3;
        end(process);
    }
}

/// A program that is left alone.
struct Resting
{
    const Program &program;
    std::unique_ptr<QProcess> process = std::make_unique<QProcess>();
    ThreadFigures wakeUpsBefore = {};
    ThreadFigures timeBefore = {};

    void report(benchmark::State &state) const
    {
        const auto tell = [&](const char *what, double value) {
            state.counters[std::string(program.name) + '.' + what] = value;
        };
        const qint64 id = process->processId();
        tell("wakeUps", sumSince(wakeUpsBefore, wakeUps(id)));
        tell("processor_ms", sumSince(timeBefore, processorTime(id)) * 1e3);
        tell("rss_kB", memory(id, "Rss:"));
        tell("pss_kB", memory(id, "Pss:"));
        tell("private_kB", memory(id, "Private_Clean:") + memory(id, "Private_Dirty:"));
    }
};

// A minute in which nothing happens, for all at once.
void idle(benchmark::State &state)
{
    std::vector<Resting> resting;
    for (const Program &program : programs()) {
        Resting one{program};
        if (session().startItem(*one.process, program))
            resting.push_back(std::move(one));
    }
    // The looking around after the start is over by then.
    spendTime([] { return false; }, 15'000);
    for (Resting &one : resting) {
        one.wakeUpsBefore = wakeUps(one.process->processId());
        one.timeBefore = processorTime(one.process->processId());
    }
    for (auto _ : state)
        spendTime([] { return false; }, 60'000);
    for (Resting &one : resting) {
        one.report(state);
        end(*one.process);
    }
}

// The time of one change from the file to the announced agenda, and what many of them leave in memory.
void manyRefreshes(benchmark::State &state)
{
    QProcess process;
    if (!session().startItem(process, programs().front()))
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
    end(process);
}

BENCHMARK(idle)->UseRealTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(manyRefreshes)->UseRealTime()->Iterations(2000)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace mivora

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    for (const mivora::Program &program : mivora::programs())
        benchmark::RegisterBenchmark((std::string("start/") + program.name).c_str(), mivora::start, program)
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
}

#include "Tray.moc"
