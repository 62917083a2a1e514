#include "WholeDay.h"

#include "App/CalendarStores.h"
#include "MeetingTexts/LocalDay.h"
#include "Preferences/Settings.h"
#include "support/AccessibleView.h"

#include <QDBusPendingCall>
#include <QDirIterator>
#include <QGuiApplication>
#include <QWindow>
#include <ctime>
#include <gtest/gtest.h>
#include <ostream>

namespace mivora {

namespace {

const QString settingsFile = QStringLiteral("config/mivora.json");
const QString accessFile = QStringLiteral("state/access");

void setLocalZone(const QByteArray &name)
{
    if (name.isEmpty())
        qunsetenv("TZ");
    else
        qputenv("TZ", name);
    tzset();
}

/// "09:00 Standup · Zoom": without the blanks that part columns.
std::string plain(const QString &text)
{
    return text.simplified().toStdString();
}

/// "(Lunch)" for a label, "-" for a separator.
std::string textOf(const kelo::DBusMenuLayout &item)
{
    const auto property = [&](const char *name) { return item.properties.value(QLatin1String(name)); };
    if (property("type").toString() == QLatin1String("separator"))
        return std::string("-");
    const QString label = property("label").toString();
    const bool isEnabled = property("enabled").isNull() || property("enabled").toBool();
    return plain(isEnabled ? label : QStringLiteral("(%1)").arg(label));
}

std::string joined(const std::vector<std::string> &texts)
{
    std::string result;
    for (const std::string &text : texts)
        result += (result.empty() ? "" : " | ") + text;
    return result;
}

} // namespace

std::ostream &operator<<(std::ostream &stream, const Seen &seen)
{
    return stream << "\n  tray:   " << seen.tray << "\n  menu:   " << joined(seen.menu)
                  << "\n  panel:  " << seen.panel << "\n  opened: " << joined(seen.opened);
}

WholeDay::WholeDay(const char *zone)
{
    // The presentation that gives the tray the title as a text.
    qputenv("MIVORA_TRAY", "label");
    setLocalZone(zone);
}

WholeDay::~WholeDay()
{
    m_service.reset();
    m_delegate.reset();
    setLocalZone(m_outerZone);
    qunsetenv("MIVORA_TRAY");
}

void WholeDay::skipFirstRun()
{
    JsonDefaultsStore(m_home.filePath(settingsFile)).setValue(settingsKey::hasCompletedOnboarding, true);
    AccessMemory(m_home.filePath(accessFile)).allow();
}

void WholeDay::start()
{
    const auto before = m_tray->registered.size();
    m_defaults = std::make_unique<JsonDefaultsStore>(m_home.filePath(settingsFile));
    m_access = std::make_unique<AccessMemory>(m_home.filePath(accessFile));
    m_delegate = std::make_unique<AppDelegate>(
        parts(*m_defaults,
              makeCalendarStore({.folders = {m_calendars.path()}, .now = clock.now(), .zone = userTimeZone()},
                                *m_defaults, *m_access),
              m_connection));
    m_service = std::make_unique<ApplicationService>(m_connection, *m_delegate, StartedBy::user);
    m_delegate->launch();
    claimApplicationName(m_connection);
    ASSERT_TRUE(waitFor([&] { return m_tray->registered.size() > before; })) << "no item came to the tray";
}

void WholeDay::restart()
{
    m_service.reset();
    m_delegate.reset();
    start();
}

void WholeDay::passUntil(Timestamp time)
{
    if (!m_delegate)
        clock.time = time;
    const Seconds tick(AppDelegate::tickMilliseconds / 1000);
    while (clock.time < time) {
        clock.time = std::min(clock.time + tick, time);
        m_delegate->scheduler().refresh();
        QCoreApplication::processEvents();
    }
}

void WholeDay::sleepUntil(Timestamp time)
{
    clock.time = time;
    Q_EMIT systemEvents.didWake();
}

void WholeDay::travelTo(const char *zone)
{
    setLocalZone(zone);
    Q_EMIT systemEvents.timeZoneChanged();
}

void WholeDay::pressInPanel(const char *button)
{
    QWindow *window = m_delegate->panel().controller().panel().window();
    ASSERT_TRUE(window && window->isVisible()) << "no panel to press " << button << " in";
    const support::AccessibleView view(*window);
    const QString name = QString::fromUtf8(button);
    // A window that has just come up, or shows another meeting, has yet to lay out what is in it.
    const auto isLaidOut = [&] {
        const auto *join = view.find(QAccessible::Button, QStringLiteral("Join"));
        const auto *snooze = view.find(QAccessible::Button, QStringLiteral("Snooze 1 min"));
        return !join || !snooze || !join->rect().intersects(snooze->rect());
    };
    EXPECT_TRUE(waitFor([&] { return isLaidOut() && view.click(QAccessible::Button, name); })) << button;
}

void WholeDay::pressInWalkthrough(const char *button)
{
    const QString name = QString::fromUtf8(button);
    const auto place = [&] {
        QWindow *window = walkthrough();
        auto *item = window ? support::AccessibleView(*window).find(QAccessible::Button, name) : nullptr;
        return item ? item->rect() : QRect();
    };
    // One step slides out while the next one comes in: the button is where it stays for a while.
    const auto isStill = [&] {
        const QRect before = place();
        waitFor([] { return false; }, std::chrono::milliseconds(300));
        return before.isValid() && place() == before;
    };
    ASSERT_TRUE(waitFor(isStill)) << button;
    EXPECT_TRUE(support::AccessibleView(*walkthrough()).click(QAccessible::Button, name)) << button;
}

void WholeDay::chooseInMenu(const char *text)
{
    for (const auto &[id, title] : menuEntries()) {
        if (title.starts_with(text)) {
            m_tray->click(id);
            return;
        }
    }
    ADD_FAILURE() << "the menu has no entry " << text;
}

void WholeDay::setShortcut()
{
    m_delegate->prefs().setJoinHotKey(kelo::HotKeyCombo::defaultCombo);
}

Seen WholeDay::seen()
{
    Seen seen;
    seen.tray = plain(m_tray->property("XAyatanaLabel").toString());
    const QString icon = m_tray->property("IconName").toString();
    if (icon.contains(QLatin1String("-urgent")))
        seen.tray += " !";
    if (icon.contains(QLatin1String("-exclamation")))
        seen.tray += "?";
    for (const auto &[id, title] : menuEntries()) {
        if (title.starts_with("Join Next Meeting") || title.starts_with("Settings"))
            break;
        seen.menu.push_back(title);
    }
    if (!seen.menu.empty() && seen.menu.back() == "-")
        seen.menu.pop_back();
    seen.panel = panelText();
    for (const QString &link : workspace.opened)
        seen.opened.push_back(link.toStdString());
    return seen;
}

std::vector<std::string> WholeDay::menuCommands()
{
    std::vector<std::string> commands;
    bool isBelowMeetings = false;
    for (const auto &[id, title] : menuEntries()) {
        isBelowMeetings =
            isBelowMeetings || title.starts_with("Join Next Meeting") || title.starts_with("Settings");
        if (isBelowMeetings)
            commands.push_back(title);
    }
    return commands;
}

void WholeDay::call(const char *interface, const char *method, const QVariantList &arguments)
{
    const QDBusConnection caller = m_bus.connection();
    auto message = QDBusMessage::createMethodCall(QLatin1String(applicationBusName),
                                                  QLatin1String(applicationObjectPath),
                                                  QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    const QDBusPendingCall pending = caller.asyncCall(message);
    ASSERT_TRUE(waitFor([&] { return pending.isFinished(); })) << method;
    EXPECT_FALSE(pending.isError()) << qPrintable(pending.error().message());
}

std::string WholeDay::written() const
{
    std::string text;
    QDirIterator files(m_home.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        EXPECT_TRUE(file.open(QFile::ReadOnly)) << qPrintable(file.fileName());
        text += file.readAll().toStdString();
    }
    return text;
}

std::vector<std::pair<int, std::string>> WholeDay::menuEntries()
{
    std::vector<std::pair<int, std::string>> entries;
    for (const kelo::DBusMenuLayout &item : m_tray->open().children)
        entries.emplace_back(item.id, textOf(item));
    return entries;
}

std::string WholeDay::panelText() const
{
    if (!m_delegate || !m_delegate->panel().isVisible())
        return {};
    const JoinPanelModel &panel = m_delegate->panel().model();
    return plain(panel.title() + QStringLiteral(", ") + panel.timeText() +
                 (panel.hasLink() ? QStringLiteral(", ") + panel.serviceName() : QString()));
}

QWindow *WholeDay::walkthrough()
{
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->title() == QLatin1String("Welcome to Mivora"))
            return window;
    }
    return nullptr;
}

} // namespace mivora
