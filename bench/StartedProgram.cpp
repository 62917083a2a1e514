#include "StartedProgram.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace mivora {

namespace {

// What a file of each of a process's threads says.
ThreadFigures figuresOfThreads(qint64 process, const char *file,
                               const std::function<double(const QByteArray &)> &value)
{
    ThreadFigures figures;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(process));
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        figures[task] = value(contentOf(tasks.filePath(task + u'/' + QLatin1String(file))));
    return figures;
}

// The number behind a name in one of the kernel's tables.
double numberOf(const QByteArray &table, const char *name)
{
    for (const QByteArray &line : table.split('\n')) {
        if (line.startsWith(name))
            return line.simplified().split(' ').value(1).toDouble();
    }
    return 0;
}

} // namespace

ItemWatcher::ItemWatcher(QDBusConnection bus)
{
    bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                       QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
    bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
}

void ItemWatcher::RegisterStatusNotifierItem(const QString &)
{
    ++items;
}

void spendTime(const std::function<bool()> &isOver, int milliseconds)
{
    QElapsedTimer timer;
    for (timer.start(); !isOver() && timer.elapsed() < milliseconds;) {
        QCoreApplication::processEvents();
        // What is measured has the processor for itself.
        QThread::usleep(200);
    }
}

QProcessEnvironment environmentIn(const QTemporaryDir &home, const support::PrivateBus &bus)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"})
        environment.insert(QLatin1String(name), home.path());
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromLatin1(bus.address()));
    return environment;
}

double sumSince(const ThreadFigures &before, const ThreadFigures &now)
{
    double sum = 0;
    for (auto figure = now.begin(); figure != now.end(); ++figure)
        sum += figure.value() - before.value(figure.key());
    return sum;
}

ThreadFigures processorTime(qint64 process)
{
    constexpr double nanoseconds = 1e-9;
    return figuresOfThreads(process, "schedstat", [](const QByteArray &text) {
        return nanoseconds * text.split(' ').value(0).toDouble();
    });
}

ThreadFigures wakeUps(qint64 process)
{
    return figuresOfThreads(
        process, "status", [](const QByteArray &text) { return numberOf(text, "voluntary_ctxt_switches:"); });
}

double memory(qint64 process, const char *name)
{
    return numberOf(contentOf(QStringLiteral("/proc/%1/smaps_rollup").arg(process)), name);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace mivora
