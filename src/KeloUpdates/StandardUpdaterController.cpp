#include "KeloUpdates/StandardUpdaterController.h"

#include <QLoggingCategory>
#include <QRandomGenerator>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.updates")

using namespace std::chrono_literals;

const QString lastCheckKey = QStringLiteral("lastUpdateCheck");
const QString announcedKey = QStringLiteral("announcedVersion");

/// By chance, so that not everybody asks at the same time.
std::chrono::minutes untilFirstLook()
{
    return std::chrono::minutes(QRandomGenerator::global()->bounded(10, 60));
}

} // namespace

StandardUpdaterController::StandardUpdaterController(bool startingUpdater, UpdateFeed feed, UpdaterHost host)
    : m_isStarted(startingUpdater), m_feed(std::move(feed)), m_host(std::move(host)),
      m_window(m_host.views, m_host.program.name)
{
    connect(&m_window, &UpdateWindow::chosen, this, &StandardUpdaterController::perform);
    connect(&m_timer, &QTimer::timeout, this, &StandardUpdaterController::tick);
    m_timer.setTimerType(Qt::VeryCoarseTimer);
    if (m_isStarted)
        m_timer.start(untilFirstLook());
}

StandardUpdaterController::~StandardUpdaterController()
{
    if (m_checker)
        m_checker->cancel();
}

mivora::DefaultsStore &StandardUpdaterController::memory()
{
    if (!m_memory)
        m_memory = std::make_unique<mivora::JsonDefaultsStore>(m_host.memoryPath);
    return *m_memory;
}

void StandardUpdaterController::tick()
{
    // Timers stand still while the machine sleeps, the clock does not.
    m_timer.start(1h);
    if (m_stage != Stage::idle || m_window.isVisible() || !isDue())
        return;
    m_isAsked = false;
    m_stage = Stage::checking;
    check();
}

/// A last check in the future was made by a clock that has been set right since.
bool StandardUpdaterController::isDue()
{
    constexpr qint64 day = std::chrono::seconds(24h).count();
    const auto last = QDateTime::fromString(memory().value(lastCheckKey).toString(), Qt::ISODate);
    const qint64 passed = last.secsTo(m_host.now());
    return m_isStarted && (!last.isValid() || passed < 0 || passed >= day);
}

void StandardUpdaterController::checkForUpdates()
{
    if (!m_isStarted)
        return show(notConfiguredPage(m_host.program), Stage::idle);
    m_isAsked = true;
    const Stage before = m_stage;
    if (before == Stage::offering)
        return show(m_window.page(), before);
    show(checkingPage(), Stage::checking);
    if (before == Stage::idle)
        check();
}

void StandardUpdaterController::check()
{
    memory().setValue(lastCheckKey, m_host.now().toString(Qt::ISODate));
    m_checker = m_plugin.get<UpdateChecker>();
    if (!m_checker) {
        qCCritical(log).noquote() << "Updates can't be looked for:" << m_plugin.errorText();
        return finishCheck(UpdateFault::incomplete);
    }
    m_checker->check(m_feed, [this](const CheckOutcome &outcome) { finishCheck(outcome); });
}

void StandardUpdaterController::finishCheck(const CheckOutcome &outcome)
{
    const auto *update = std::get_if<Update>(&outcome);
    if (!m_isAsked && (!update || memory().value(announcedKey) == update->version))
        return stop();
    if (update) {
        m_page = update->page;
        memory().setValue(announcedKey, update->version);
    }
    show(pageOf(outcome, m_host.program), update ? Stage::offering : Stage::idle,
         m_isAsked ? Attention::taken : Attention::left);
}

void StandardUpdaterController::show(const UpdatePage &page, Stage stage, Attention attention)
{
    const bool isShown = m_window.show(page, attention);
    // Nobody can answer an offer that isn't seen: the next check starts anew.
    m_stage = isShown || stage == Stage::checking ? stage : Stage::idle;
}

void StandardUpdaterController::perform(UpdateAction action)
{
    stop();
    if (action == UpdateAction::check)
        checkForUpdates();
    else if (action == UpdateAction::openPage)
        m_host.openPage(m_page);
}

void StandardUpdaterController::stop()
{
    m_stage = Stage::idle;
    if (m_checker)
        m_checker->cancel();
    m_window.close();
}

} // namespace kelo
