#include "Calendar/FakeEventStore.h"
#include "FakeSurroundings.h"
#include "JoinPanel/JoinPanelController.h"
#include "Platform/TimeZone.h"
#include "Preferences/Settings.h"
#include "support/MeetingFactory.h"
#include "support/MemoryDefaultsStore.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

// The whole application put together, on a clock and a calendar of the test's.
namespace mivora {

namespace {

const QString zoomLink = QStringLiteral("https://zoom.us/j/123456789");

std::unique_ptr<MemoryDefaultsStore> pastTheFirstRun()
{
    auto defaults = std::make_unique<MemoryDefaultsStore>();
    defaults->setValue(settingsKey::hasCompletedOnboarding, true);
    return defaults;
}

class RunningApp : public testing::Test, protected FakeSurroundings
{
protected:
    RunningApp()
    {
        clock.time = at("2026-03-10T08:50:00Z");
        store->storeCalendars = {{"work", "Work", "Account", std::nullopt}};
        store->add("Design review", secondsOf("2026-03-10T09:00:00Z")).url = zoomLink.toStdString();
        delegate.launch();
    }

    static double secondsOf(const char *time) { return at(time).time_since_epoch().count(); }

    /// What the tick does, and every event of the system.
    void wakeAt(const char *time)
    {
        clock.time = at(time);
        Q_EMIT systemEvents.didWake();
    }

    bool isPanelShown() { return delegate.panel().isVisible(); }

    const JoinPanelModel &panel() { return delegate.panel().model(); }

    std::unique_ptr<MemoryDefaultsStore> ownedDefaults = pastTheFirstRun();
    MemoryDefaultsStore &defaults = *ownedDefaults;
    std::unique_ptr<FakeEventStore> ownedStore = std::make_unique<FakeEventStore>();
    FakeEventStore *store = ownedStore.get();
    AppDelegate delegate{parts(defaults, std::move(ownedStore))};
};

} // namespace

TEST_F(RunningApp, moveToTheNextMeetingInPlace)
{
    store->add("Planning", secondsOf("2026-03-10T09:00:30Z")).url = zoomLink.toStdString();
    wakeAt("2026-03-10T08:59:30Z");
    ASSERT_TRUE(isPanelShown());
    QWindow *window = delegate.panel().controller().panel().window();
    const QPoint place = window->position();
    const QString first = panel().title();
    panel().dismiss();
    ASSERT_TRUE(isPanelShown());
    EXPECT_NE(panel().title(), first);
    EXPECT_EQ(delegate.panel().controller().panel().window(), window);
    EXPECT_EQ(window->position(), place);
}

TEST_F(RunningApp, followsSettingsThatAnotherProcessWrites)
{
    wakeAt("2026-03-10T08:55:00Z");
    EXPECT_FALSE(isPanelShown());
    defaults.changeFromOutside([](DefaultsStore &store) { store.setValue(settingsKey::leadMinutes, 5); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isPanelShown(); }));
}

TEST_F(RunningApp, obeysCommandsByWhatIsKnownOfTheCalendars)
{
    QObject caller;
    std::vector<std::string> answers;
    const auto send = [&](const char *action, QObject &from) {
        delegate.perform({QLatin1String(action), {}, &from, [&answers, action](const CommandResult &result) {
                              answers.push_back(action + std::string(result.isDone() ? "" : " failed"));
                          }});
    };
    store->loaded = false;
    send("join", caller);
    EXPECT_EQ(workspace.opened, QStringList{zoomLink});
    send("dismiss", caller);
    auto impatient = std::make_unique<QObject>();
    send("snooze", *impatient);
    impatient.reset();
    EXPECT_EQ(answers, std::vector<std::string>{"join"});

    clock.time = at("2026-03-10T08:59:30Z");
    store->add("Planning", secondsOf("2026-03-10T09:00:30Z")).url = zoomLink.toStdString();
    Q_EMIT store->changed();
    EXPECT_TRUE(QTest::qWaitFor([&] { return answers.size() == 2; }));
    EXPECT_FALSE(isPanelShown());
    store->loaded = true;
    send("snooze", caller);
    EXPECT_EQ(answers, (std::vector<std::string>{"join", "dismiss", "snooze failed"}));
}

TEST_F(RunningApp, takesInABurstOfChangesOnce)
{
    int refreshes = 0;
    QObject::connect(&delegate, &AppDelegate::refreshed, &delegate, [&] { ++refreshes; });
    for (int i = 0; i < 100; ++i)
        Q_EMIT store->changed();
    EXPECT_TRUE(QTest::qWaitFor([&] { return refreshes > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(refreshes, 1);
}

TEST_F(RunningApp, refreshesOnEveryEventOfTheSystem)
{
    int refreshes = 0;
    QObject::connect(&delegate, &AppDelegate::refreshed, &delegate, [&] { ++refreshes; });
    Q_EMIT systemEvents.didWake();
    Q_EMIT systemEvents.dayChanged();
    Q_EMIT systemEvents.clockChanged();
    Q_EMIT systemEvents.timeZoneChanged();
    EXPECT_EQ(refreshes, 4);
    EXPECT_EQ(store->zone, userTimeZone());
}

TEST_F(RunningApp, opensOneSettingsWindow)
{
    EXPECT_TRUE(delegate.perform(QStringLiteral("settings"), QStringLiteral("calendars")).isDone());
    EXPECT_TRUE(delegate.perform(QStringLiteral("settings"), {}).isDone());
    delegate.reopen();
    int windows = 0;
    for (const QWindow *window : QGuiApplication::topLevelWindows())
        windows += window->isVisible() && window->title() == QLatin1String("Calendars") ? 1 : 0;
    EXPECT_EQ(windows, 1);
    EXPECT_FALSE(delegate.perform(QStringLiteral("settings"), QStringLiteral("other")).isDone());
}

TEST_F(RunningApp, refreshesOnceForASettingOnAPage)
{
    delegate.reopen();
    ASSERT_TRUE(QTest::qWaitFor([] { return QGuiApplication::focusWindow(); }));
    QSignalSpy refreshed(&delegate, &AppDelegate::refreshed);
    QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_Tab);
    QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_Space);
    EXPECT_FALSE(delegate.prefs().showTitle());
    QTest::qWait(0);
    EXPECT_EQ(refreshed.count(), 1);
}

} // namespace mivora
