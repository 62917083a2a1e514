#pragma once

#include "KeloUpdates/UpdateWindow.h"
#include "Platform/PluginFile.h"
#include "Platform/linux/JsonDefaultsStore.h"

#include <QDateTime>

namespace kelo {

/// What the controller needs of the program around it.
struct UpdaterHost
{
    ViewLoader &views;
    ProgramName program;
    /// Opens a page in the user's browser.
    std::function<void(const QString &url)> openPage;
    std::function<QDateTime()> now = &QDateTime::currentDateTimeUtc;
    /// Where it is remembered when updates were last looked for, and what was told of them.
    QString memoryPath = mivora::JsonDefaultsStore::statePath();
};

/// Looks for updates when the user asks, and once a day by itself; tells of them in one window. Main thread
/// only; made at launch, it costs nothing until a check begins.
class StandardUpdaterController final : public QObject
{
    Q_OBJECT

public:
    /// Without `startingUpdater` there is no key to trust an update by: none is ever looked for.
    StandardUpdaterController(bool startingUpdater, UpdateFeed feed, UpdaterHost host);
    ~StandardUpdaterController() override;

    /// The user asks: says in the window what comes of it, whatever it is.
    void checkForUpdates();

    /// Looks at the clock, and for updates if it is time; called by the timer. Says nothing but that there is
    /// a new version, and that once for each.
    void tick();

    /// Until tick(); below zero when nothing is ever looked for.
    std::chrono::milliseconds untilTick() const { return m_timer.remainingTimeAsDuration(); }

    bool isChecking() const { return m_stage == Stage::checking; }

    UpdateWindow &window() { return m_window; }

private:
    enum class Stage { idle, checking, offering };

    mivora::DefaultsStore &memory();
    bool isDue();
    void check();
    void finishCheck(const CheckOutcome &outcome);
    void show(const UpdatePage &page, Stage stage, Attention attention = Attention::taken);
    void perform(UpdateAction action);
    void stop();

    bool m_isStarted = false;
    UpdateFeed m_feed;
    UpdaterHost m_host;
    mivora::PluginFile m_plugin{"mivora-updates", "MIVORA_UPDATES"};
    UpdateChecker *m_checker = nullptr;
    std::unique_ptr<mivora::JsonDefaultsStore> m_memory;
    QTimer m_timer;
    UpdateWindow m_window;
    Stage m_stage = Stage::idle;
    /// Whether the user waits for the check's outcome.
    bool m_isAsked = false;
    /// Of the update that is offered.
    QString m_page;
};

} // namespace kelo
