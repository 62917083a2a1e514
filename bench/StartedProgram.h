#pragma once

#include "support/PrivateBus.h"

#include <QHash>
#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>

namespace mivora {

/// Stands for a panel: hears of the item that a program shows.
class ItemWatcher final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered CONSTANT)

public:
    explicit ItemWatcher(QDBusConnection bus);

    bool isHostRegistered() const { return true; }

    int items = 0;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &service);
};

/// Lets events happen until `isOver`, or the time is.
void spendTime(const std::function<bool()> &isOver, int milliseconds);

/// A home of its own, and the environment of programs that live in it and on `bus`.
QProcessEnvironment environmentIn(const QTemporaryDir &home, const support::PrivateBus &bus);

/// What the kernel counts for each thread of a process.
using ThreadFigures = QHash<QString, double>;

/// What was added since `before`, over the threads of `now`: those that ended meanwhile took their figures
/// along.
double sumSince(const ThreadFigures &before, const ThreadFigures &now);

/// The processor's time of each thread so far, in seconds (proc(5), schedstat).
ThreadFigures processorTime(qint64 process);

/// How often each thread woke up by itself so far (proc(5), voluntary_ctxt_switches).
ThreadFigures wakeUps(qint64 process);

/// A value of /proc/PID/smaps_rollup in kB, as "Rss:".
double memory(qint64 process, const char *name);

/// All of a file; empty when it can't be read.
QByteArray contentOf(const QString &path);

} // namespace mivora
