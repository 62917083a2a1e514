#include "App/AppDelegate.h"

#include "App/AgendaJson.h"
#include "App/ConflictAlert.h"
#include "App/HotKeyRegistration.h"
#include "App/MakeUpdater.h"
#include "App/SubscriptionDialog.h"
#include "CalendarEds/DesktopSubscriptions.h"
#include "KeloHotkey/HotKeyService.h"
#include "KeloMenuBar/MainMenu.h"
#include "KeloMenuBar/MenuWindow.h"
#include "KeloPanel/NotificationInhibition.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Onboarding/OnboardingFlow.h"
#include "Platform/DefaultsStore.h"
#include "Platform/SystemEvents.h"
#include "Platform/SystemLog.h"
#include "Platform/Workspace.h"
#include "Settings/SettingsWindowController.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <array>
#include <utility>

namespace mivora {

namespace {

const QString applicationName = QStringLiteral("Mivora");

/// A command is answered this long before its caller gives up.
constexpr std::chrono::milliseconds answerMargin{1'500};

} // namespace

AppDelegate::AppDelegate(AppParts parts)
    : m_parts(std::move(parts)), m_prefs(m_parts.defaults, m_parts.loginItem), m_source(*m_parts.source),
      m_installed(m_parts.workspace), m_appearance(m_parts.bus), m_views(m_appearance),
      m_updater(makeUpdater(m_views, m_parts.workspace)), m_toast(m_views, m_parts.bus)
{
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::launch()
{
    kelo::MainMenu::build(applicationName).install(*this);
    m_scheduler = std::make_unique<Scheduler>(m_source, m_prefs, m_parts.clock);
    m_source.setOnChange([this] { calendarsChanged(); });
    m_scheduler->onPanelChange = [this](const auto &meeting) { panelRequestChanged(meeting); };
    m_commands = std::make_unique<MeetingCommands>(*m_scheduler, m_prefs, m_installed, m_parts.workspace,
                                                   m_parts.pasteboard);
    connect(m_commands.get(), &MeetingCommands::linkCopied, &m_toast, &kelo::ToastController::show);
    makePanel();
    makeStatus();
    makeOnboarding();
    m_scheduler->onRefresh = [this] { showRefreshed(); };
    connect(m_scheduler.get(), &Scheduler::happened, this, [this](const char *event, const Meeting &meeting) {
        Q_EMIT happened(event, meetingJson(meeting, agendaContext()));
    });
    installObservers();
    m_hotKey->registerHotKey();
    connect(&m_prefs, &Preferences::hideTitleWhileInhibitedChanged, this, &AppDelegate::followInhibition);
    if (m_prefs.hideTitleWhileInhibited())
        followInhibition();
    m_scheduler->refresh();
    connect(&m_tick, &QTimer::timeout, m_scheduler.get(), &Scheduler::refresh);
    // The usual kind may come a second and a half late.
    m_tick.setTimerType(Qt::PreciseTimer);
    m_tick.start(tickMilliseconds);
    m_onboarding->showAtLaunch();
}

void AppDelegate::makePanel()
{
    const JoinPanelActions actions{
        .onJoin = [this](const Meeting &meeting) { m_commands->join(meeting); },
        .onSnooze = [this](const Meeting &meeting) { m_scheduler->snooze(meeting.id); },
        .onDismiss = [this](const Meeting &meeting) { m_scheduler->dismiss(meeting.id); },
    };
    m_panel =
        std::make_unique<JoinPanelController>(m_prefs, m_views, actions, m_parts.clock.now(), m_parts.bus);
}

void AppDelegate::makeStatus()
{
    m_status = std::make_unique<StatusController>(*m_scheduler, m_prefs, m_views, m_parts.bus,
                                                  [this](kelo::Menu &menu) { buildMenu(menu); });
    connect(&m_status->item(), &kelo::StatusItemController::isShownChanged, this, &AppDelegate::tellTrayHint);
    m_hotKey =
        std::make_unique<HotKeyRegistration>(m_parts.hotKeys, m_prefs, [this] { m_commands->joinNext(); });
    m_alert = std::make_unique<ConflictAlert>(m_views, m_parts.bus);
    connect(m_hotKey.get(), &HotKeyRegistration::conflict, m_alert.get(), &ConflictAlert::show);
    connect(m_hotKey.get(), &HotKeyRegistration::stateChanged, this, &AppDelegate::hotKeyChanged);
}

void AppDelegate::makeOnboarding()
{
    m_onboarding = std::make_unique<OnboardingFlow>(
        m_views, m_prefs, m_source, *m_scheduler, m_ways,
        [this](Timestamp time) { return shortTime(time, m_scheduler->timeZone(), QLocale::system()); });
}

void AppDelegate::installObservers()
{
    const auto refreshOn = [this](auto signal) {
        connect(&m_parts.systemEvents, signal, m_scheduler.get(), &Scheduler::refresh);
    };
    refreshOn(&SystemEvents::didWake);
    refreshOn(&SystemEvents::dayChanged);
    refreshOn(&SystemEvents::clockChanged);
    connect(&m_parts.systemEvents, &SystemEvents::didWake, &m_parts.hotKeys, &kelo::HotKeyService::retry);
    connect(&m_parts.systemEvents, &SystemEvents::timeZoneChanged, this, &AppDelegate::timeZoneChanged);
    connect(&m_parts.defaults, &DefaultsStore::writeFailed, this, &AppDelegate::tellUnsavedSettings);
    // A setting that the status item or the panel shows the effect of, whoever changed it.
    for (const auto signal : {&Preferences::showTitleChanged, &Preferences::titleWidthChanged,
                              &Preferences::leadMinutesChanged, &Preferences::remindWithoutLinkChanged,
                              &Preferences::disabledCalendarIDsChanged, &Preferences::ignoredChanged})
        connect(&m_prefs, signal, m_scheduler.get(), &Scheduler::refresh, Qt::QueuedConnection);
}

/// The store tells once, until it works again: by then what is unsaved has been saved as well.
void AppDelegate::tellUnsavedSettings(const QString &reason)
{
    writeToSystemLog(QLatin1String("Mivora: settings can't be saved: ") + reason);
    m_toast.show(tr("Settings can't be saved: %1").arg(reason.section(QLatin1String(": "), -1)));
}

void AppDelegate::hotKeyChanged()
{
    if (m_settingsWindow)
        m_settingsWindow->setHotKeyState(m_hotKey->state());
    // The menu names its keys.
    Q_EMIT refreshed();
}

void AppDelegate::calendarsChanged()
{
    // However many notifications one turn of the event loop brings, what they tell of is read once.
    if (!std::exchange(m_areChangesDue, true))
        QMetaObject::invokeMethod(this, &AppDelegate::takeInChanges, Qt::QueuedConnection);
}

void AppDelegate::takeInChanges()
{
    if (!std::exchange(m_areChangesDue, false))
        return;
    m_scheduler->refresh();
    if (m_settingsWindow)
        m_settingsWindow->calendarsChanged();
    performWaiting();
}

bool AppDelegate::openSettings(std::optional<SettingsPage> page)
{
    if (!m_settingsWindow) {
        const SettingsActions actions{
            .registerHotKey =
                [this](const kelo::HotKeyCombo &combo) { return m_hotKey->tryToRegister(combo); },
            .copy = [this](const QString &text) { m_parts.pasteboard.setText(text); },
            .ownCalendars = {.isOwn = isOwnSubscription,
                             .edit = [this](const auto &calendar) { subscriptionDialog().show(calendar); }}};
        m_settingsWindow = std::make_unique<SettingsWindowController>(m_prefs, m_source, m_ways,
                                                                      m_parts.hotKeys, m_views, actions);
        m_settingsWindow->setHotKeyState(m_hotKey->state());
        m_settingsWindow->setTrayHint(m_status->trayHint());
    }
    return m_settingsWindow->show(page);
}

void AppDelegate::tellTrayHint()
{
    const QString hint = m_status->trayHint();
    m_onboarding->setTrayHint(hint);
    if (m_settingsWindow)
        m_settingsWindow->setTrayHint(hint);
}

bool AppDelegate::showToday()
{
    const auto build = [this] {
        kelo::Menu menu;
        buildMenu(menu);
        return menu;
    };
    if (!m_today)
        m_today = std::make_unique<kelo::MenuWindow>(m_views, tr("Today"), build);
    return m_today->show();
}

void AppDelegate::openLink(const QString &link)
{
    m_parts.workspace.open(link, [](bool) {});
}

SubscriptionDialog &AppDelegate::subscriptionDialog()
{
    if (!m_subscriptionDialog)
        m_subscriptionDialog =
            std::make_unique<SubscriptionDialog>(QCoreApplication::applicationFilePath(), m_views);
    return *m_subscriptionDialog;
}

void AppDelegate::offerCalendar(const QString &link)
{
    SubscriptionDialog &dialog = subscriptionDialog();
    dialog.ask(link);
    findCalendarServer(m_parts.bus, &dialog, [&dialog](const std::string &service) {
        if (service.empty())
            dialog.tellNoStore();
    });
}

void AppDelegate::timeZoneChanged()
{
    m_source.setTimeZone(userTimeZone());
    m_scheduler->refresh();
}

void AppDelegate::panelRequestChanged(const std::optional<Meeting> &meeting)
{
    if (meeting)
        m_panel->show(*meeting, m_parts.clock.now());
    else
        m_panel->hide();
}

void AppDelegate::showRefreshed()
{
    const Timestamp now = m_parts.clock.now();
    m_status->update(now, m_source.authorization(), m_source.isNothingToRead(), isDiscreet());
    m_panel->setDiscreet(isDiscreet());
    if (m_panel->isVisible())
        m_panel->refresh(m_scheduler->panelRequest(), now);
    if (m_today)
        m_today->update();
    Q_EMIT refreshed();
}

void AppDelegate::buildMenu(kelo::Menu &menu)
{
    fillStatusMenu(menu, menuContents(agendaContext()),
                   {.join = [this](const Meeting &meeting) { m_commands->join(meeting); },
                    .joinNext = [this] { m_commands->joinNext(); },
                    .allowCalendarAccess = [this] { m_onboarding->show(FirstRunStep::calendar); },
                    .openCalendarPrivacy =
                        [this] {
                            if (m_ways.hasPrivacy())
                                m_ways.openPrivacy();
                            else
                                openSettings(SettingsPage::calendars);
                        },
                    .openCalendarSettings = [this] { openSettings(SettingsPage::calendars); },
                    .openSettings = [this] { openSettings(std::nullopt); },
                    .checkForUpdates = [this] { m_updater->checkForUpdates(); },
                    .openMakerPage = [this] { openLink(QStringLiteral(MIVORA_MAKER_PAGE)); },
                    .quit = [] { QCoreApplication::quit(); }});
}

void AppDelegate::reopen()
{
    openSettings(std::nullopt);
}

CommandResult AppDelegate::perform(const QString &action, const QString &argument)
{
    const auto resultOf = [](bool isDone, const QString &failure) {
        return isDone ? CommandResult() : CommandResult{failure};
    };
    if (action == QLatin1String("join"))
        return resultOf(m_commands->joinNext(), tr("there is no meeting to join now"));
    if (action == QLatin1String("copy"))
        return !m_parts.pasteboard.isReachable()
                   ? CommandResult{tr("your desktop's clipboard takes text only from the program with the "
                                      "keyboard; install wl-clipboard")}
                   : resultOf(m_commands->copyNext(), tr("there is no meeting with a link now"));
    if (action == QLatin1String("snooze"))
        return performOnPanel(&Scheduler::snooze);
    if (action == QLatin1String("dismiss"))
        return performOnPanel(&Scheduler::dismiss);
    if (action == QLatin1String("show"))
        return resultOf(showToday(), tr("the day can't be shown"));
    if (action == QLatin1String("settings"))
        return performSettings(argument);
    if (action == QLatin1String("title"))
        return performTitle(argument);
    if (action == QLatin1String("quit")) {
        // After the answer is on its way.
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        return {};
    }
    return {tr("Mivora knows no action \"%1\"").arg(action)};
}

void AppDelegate::perform(const BusCommand &command)
{
    m_waiting.push_back({command, QDeadlineTimer(callerPatience - answerMargin)});
    if (m_areChangesDue)
        takeInChanges();
    else
        performWaiting();
    if (!m_waiting.empty())
        QTimer::singleShot(callerPatience - answerMargin, Qt::PreciseTimer, this,
                           &AppDelegate::performWaiting);
}

void AppDelegate::performWaiting()
{
    static constexpr std::array aboutMeetings{QLatin1String("join"), QLatin1String("copy"),
                                              QLatin1String("snooze"), QLatin1String("dismiss")};
    for (const WaitingCommand &waiting : std::exchange(m_waiting, {})) {
        const BusCommand &command = waiting.command;
        if (!command.caller)
            continue;
        holdActivation(command.activation);
        const CommandResult result = perform(command.action, command.argument);
        const bool mayYetBeDone = !result.isDone() && !m_source.isLoaded() &&
                                  std::ranges::find(aboutMeetings, command.action) != aboutMeetings.end();
        if (!mayYetBeDone)
            command.answer(result);
        else if (waiting.patience.hasExpired())
            command.answer({tr("your calendars are still being read; try again in a moment")});
        else
            m_waiting.push_back(waiting);
    }
}

CommandResult AppDelegate::performSettings(const QString &page)
{
    const auto chosen = settingsPageFromRawValue(page);
    if (!page.isEmpty() && !chosen)
        return {tr("the settings have no page \"%1\"").arg(page)};
    return openSettings(chosen) ? CommandResult() : CommandResult{tr("the settings can't be shown")};
}

CommandResult AppDelegate::performTitle(const QString &wish)
{
    // The launcher's action has no argument.
    const bool toggles = wish.isEmpty() || wish == QLatin1String("toggle");
    const bool hides = wish == QLatin1String("hide") || (toggles && !isDiscreet());
    if (!hides && !toggles && wish != QLatin1String("show"))
        return {tr("title: expected hide, show or toggle, got \"%1\"").arg(wish)};
    m_hidesTitles = hides;
    showRefreshed();
    if (hides || !isDiscreet())
        return {};
    return {tr("titles stay hidden while your desktop holds notifications back; `mivora defaults write "
               "hideTitleWhileInhibited false` shows them")};
}

bool AppDelegate::isDiscreet() const
{
    return m_hidesTitles || (m_inhibition && m_inhibition->isInhibited());
}

void AppDelegate::followInhibition()
{
    m_inhibition.reset();
    if (m_prefs.hideTitleWhileInhibited()) {
        m_inhibition = std::make_unique<kelo::NotificationInhibition>(m_parts.bus);
        connect(m_inhibition.get(), &kelo::NotificationInhibition::changed, this,
                &AppDelegate::showRefreshed);
    }
    showRefreshed();
}

CommandResult AppDelegate::performOnPanel(void (Scheduler::*decision)(const std::string &))
{
    if (!m_scheduler->panelRequest())
        return {tr("no meeting has its panel shown now")};
    // A copy: the refresh replaces the request.
    const std::string id = m_scheduler->panelRequest()->id;
    (m_scheduler.get()->*decision)(id);
    return {};
}

QJsonObject AppDelegate::agenda(bool all) const
{
    AgendaContext context = agendaContext();
    context.all = all;
    return agendaJson(context);
}

AgendaContext AppDelegate::agendaContext() const
{
    const kelo::HotKeyState &hotKey = m_hotKey->state();
    return {.scheduler = *m_scheduler,
            .source = m_source,
            .prefs = m_prefs,
            .installed = m_installed,
            .now = m_parts.clock.now(),
            .zone = m_scheduler->timeZone(),
            .joinHotKey = hotKey.kind == kelo::HotKeyState::Kind::registered ? std::optional(hotKey.keys)
                                                                             : std::nullopt,
            .canCheckForUpdates = m_updater->canCheckForUpdates(),
            .isDiscreet = isDiscreet()};
}

} // namespace mivora
