#pragma once

#include "KeloSparkle/PackageOpener.h"
#include "KeloSparkle/UpdateEngine.h"
#include "KeloSparkle/UpdateMemory.h"
#include "KeloSparkle/UpdateSchedule.h"
#include "KeloSparkle/UpdateWindow.h"

#include <QObject>

namespace kelo {

enum class Starting {
    /// Looks for updates by itself as well.
    yes,
    /// There is no key to trust an update by, so none is ever looked for.
    no,
};

/// What the controller needs of the program around it.
struct UpdaterHost
{
    ViewLoader &views;
    QDBusConnection sessionBus;
    /// Connected to with the first scheduled check.
    UpdateSchedule::Bus systemBus;
    ProgramName program;
    /// The engine, loaded on first need; null when it isn't there.
    std::function<UpdateEngine *()> engine;
    /// Opens a verified package; false when nothing can.
    std::function<void(const QString &path, PackageOpened done)> open;
    /// As above, in the file manager.
    std::function<void(const QString &path, PackageOpened done)> reveal;
    UpdateSchedule::Now now;
    /// Where the update memory is.
    QString memoryPath;
    /// Where packages are downloaded to; holds nothing else.
    QString downloadFolder;
};

/// Leads through an update: check, offer, download, hand over. One at a time, in one window. Main thread
/// only; made at launch, it costs nothing until a check begins.
class StandardUpdaterController final : public QObject
{
    Q_OBJECT

public:
    StandardUpdaterController(Starting starting, UpdateFeed feed, UpdaterHost host,
                              QObject *parent = nullptr);
    ~StandardUpdaterController() override;

    /// The user asks: says in the window what comes of it, whatever it is.
    void checkForUpdates();

    /// The schedule asks: says nothing but that there is a new version, and that once for each.
    void checkInBackground();

    bool isStarted() const { return m_starting == Starting::yes; }

    UpdateWindow &window() { return m_window; }

private:
    enum class Stage { idle, checking, offering, downloading, ready };

    void check();
    void finishCheck(const CheckOutcome &outcome);
    void announce(const CheckOutcome &outcome);
    void perform(UpdateAction action);
    void download();
    void finishDownload(const DownloadOutcome &outcome);
    void handOver(const std::function<void(const QString &, PackageOpened)> &to);
    void stop();
    void show(const UpdatePage &page, Stage stage, Attention attention = Attention::taken);
    UpdatePage pageOf(const CheckOutcome &outcome) const;

    Starting m_starting;
    UpdateFeed m_feed;
    UpdaterHost m_host;
    UpdateMemory m_memory;
    UpdateSchedule m_schedule;
    UpdateWindow m_window;
    UpdateEngine *m_engine = nullptr;
    Stage m_stage = Stage::idle;
    /// Whether the user waits for the check's outcome.
    bool m_isAsked = false;
    Update m_update;
    QString m_package;
};

} // namespace kelo
