#include "KeloSparkle/StandardUpdaterController.h"

#include <QFile>

namespace kelo {

StandardUpdaterController::StandardUpdaterController(Starting starting, UpdateFeed feed, UpdaterHost host,
                                                     QObject *parent)
    : QObject(parent), m_starting(starting), m_feed(std::move(feed)), m_host(std::move(host)),
      m_memory(m_host.memoryPath), m_schedule(m_memory, m_host.systemBus, m_host.now),
      m_window(m_host.views, m_host.sessionBus, m_host.program.name)
{
    connect(&m_window, &UpdateWindow::chosen, this, &StandardUpdaterController::perform);
    connect(&m_schedule, &UpdateSchedule::due, this, &StandardUpdaterController::checkInBackground);
    if (m_starting == Starting::yes && !m_feed.address.isEmpty())
        m_schedule.start();
}

StandardUpdaterController::~StandardUpdaterController()
{
    if (m_engine)
        m_engine->cancel();
}

void StandardUpdaterController::checkForUpdates()
{
    if (m_starting == Starting::no || m_feed.address.isEmpty())
        return show(notConfiguredPage(m_host.program), Stage::idle);
    // What is going on already comes to the front.
    if (m_stage == Stage::idle || (m_stage == Stage::checking && !m_isAsked)) {
        m_isAsked = true;
        const bool isChecking = m_stage == Stage::checking;
        show(checkingPage(), Stage::checking);
        if (!isChecking)
            check();
        return;
    }
    m_window.show(m_window.page(), Attention::taken);
}

void StandardUpdaterController::checkInBackground()
{
    if (m_stage != Stage::idle || m_window.isVisible() || m_starting == Starting::no)
        return;
    m_isAsked = false;
    m_stage = Stage::checking;
    check();
}

void StandardUpdaterController::check()
{
    m_memory.setLastCheck(m_host.now());
    if (!m_engine)
        m_engine = m_host.engine();
    if (!m_engine)
        return finishCheck(UpdateFailure{UpdateFault::incomplete, {}});
    m_engine->check(m_feed, [this](const CheckOutcome &outcome) { finishCheck(outcome); });
}

UpdatePage StandardUpdaterController::pageOf(const CheckOutcome &outcome) const
{
    if (const auto *update = std::get_if<Update>(&outcome))
        return updatePage(m_host.program, *update);
    if (const auto *none = std::get_if<NoUpdate>(&outcome))
        return noUpdatePage(m_host.program, *none);
    return failurePage(m_host.program, std::get<UpdateFailure>(outcome), UpdateStep::check);
}

void StandardUpdaterController::finishCheck(const CheckOutcome &outcome)
{
    if (const auto *update = std::get_if<Update>(&outcome))
        m_update = *update;
    const bool isUpdate = std::holds_alternative<Update>(outcome);
    if (!m_isAsked)
        return announce(outcome);
    show(pageOf(outcome), isUpdate ? Stage::offering : Stage::idle);
}

void StandardUpdaterController::announce(const CheckOutcome &outcome)
{
    const bool isNews =
        std::holds_alternative<Update>(outcome) && m_memory.announcedVersion() != m_update.version;
    if (!isNews)
        return stop();
    m_memory.setAnnouncedVersion(m_update.version);
    show(pageOf(outcome), Stage::offering, Attention::left);
}

void StandardUpdaterController::perform(UpdateAction action)
{
    switch (action) {
    case UpdateAction::none:
        break;
    case UpdateAction::close:
    case UpdateAction::cancel:
        stop();
        break;
    case UpdateAction::check:
        m_stage = Stage::idle;
        checkForUpdates();
        break;
    case UpdateAction::download:
        download();
        break;
    case UpdateAction::open:
        handOver(m_host.open);
        break;
    case UpdateAction::reveal:
        handOver(m_host.reveal);
        break;
    }
}

void StandardUpdaterController::download()
{
    show(downloadingPage(m_host.program, m_update, 0), Stage::downloading);
    m_engine->download(
        m_update, m_feed, m_host.downloadFolder,
        [this](qint64 received) { m_window.update(downloadingPage(m_host.program, m_update, received)); },
        [this](const DownloadOutcome &outcome) { finishDownload(outcome); });
}

void StandardUpdaterController::finishDownload(const DownloadOutcome &outcome)
{
    if (const auto *failure = std::get_if<UpdateFailure>(&outcome))
        return show(failurePage(m_host.program, *failure, UpdateStep::download), Stage::idle);
    m_package = std::get<QString>(outcome);
    show(readyPage(m_host.program, m_update), Stage::ready);
}

void StandardUpdaterController::handOver(const std::function<void(const QString &, PackageOpened)> &to)
{
    stop();
    if (!QFile::exists(m_package))
        return show(failurePage(m_host.program, {UpdateFault::vanished, {}}, UpdateStep::download),
                    Stage::idle);
    const QPointer<StandardUpdaterController> self(this);
    to(m_package, [self, path = m_package](bool isOpen) {
        if (self && !isOpen)
            self->show(lyingPage(path), Stage::idle);
    });
}

void StandardUpdaterController::stop()
{
    m_stage = Stage::idle;
    if (m_engine)
        m_engine->cancel();
    m_window.hide();
}

void StandardUpdaterController::show(const UpdatePage &page, Stage stage, Attention attention)
{
    m_stage = stage;
    m_window.show(page, attention);
    // A notification has no buttons: with it, the next check starts anew.
    if (!m_window.isVisible() && (stage == Stage::offering || stage == Stage::ready))
        m_stage = Stage::idle;
}

} // namespace kelo
