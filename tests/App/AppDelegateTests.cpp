#include "Calendar/FakeEventStore.h"
#include "FakeSurroundings.h"
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

class RunningApp : public testing::Test, protected FakeSurroundings
{
protected:
    RunningApp()
    {
        clock.time = at("2026-03-10T08:50:00Z");
        add("Design review", "2026-03-10T09:00:00Z");
        delegate.launch();
    }

    void add(const char *title, const char *start)
    {
        store->add(title, secondsSinceEpoch(at(start))).url = zoomLink.toStdString();
    }

    static QStringList windows()
    {
        QStringList titles;
        for (const QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->isVisible())
                titles.append(window->title());
        }
        return titles;
    }

    bool settings(const char *page = "")
    {
        return delegate.perform(QStringLiteral("settings"), QLatin1String(page)).isDone();
    }

    MemoryDefaultsStore defaults{MemoryDefaultsStore::Kind::preview,
                                 {{settingsKey::hasCompletedOnboarding, true}}};
    std::unique_ptr<FakeEventStore> ownedStore = std::make_unique<FakeEventStore>();
    FakeEventStore *store = ownedStore.get();
    AppDelegate delegate{parts(defaults, std::move(ownedStore))};
};

} // namespace

TEST_F(RunningApp, refreshesOnceForWhateverHappens)
{
    QSignalSpy refreshed(&delegate, &AppDelegate::refreshed);

    const std::pair<const char *, std::function<void()>> rows[] = {
        {"the end of sleep", [&] { Q_EMIT systemEvents.didWake(); }},
        {"a new day", [&] { Q_EMIT systemEvents.dayChanged(); }},
        {"another time", [&] { Q_EMIT systemEvents.clockChanged(); }},
        {"another zone", [&] { Q_EMIT systemEvents.timeZoneChanged(); }},
        {"a burst of changes in calendars",
         [&] {
             for (int i = 0; i < 100; ++i)
                 Q_EMIT store->changed();
         }},
        {"a setting", [&] { delegate.prefs().setLeadMinutes(2); }},
        {"a setting that another program writes",
         [&] {
             defaults.changeFromOutside([](auto &other) { other.setValue(settingsKey::leadMinutes, 0); });
         }},
    };

    for (const auto &[what, happens] : rows) {
        happens();
        EXPECT_TRUE(QTest::qWaitFor([&] { return refreshed.count() > 0; })) << what;
        QCoreApplication::processEvents();
        EXPECT_EQ(refreshed.count(), 1) << what;
        refreshed.clear();
    }
    EXPECT_EQ(store->zone, userTimeZone());
}

TEST_F(RunningApp, obeysCommandsByWhatIsKnownOfTheCalendars)
{
    QObject caller;
    QStringList answers;
    const auto send = [&](const char *action, QObject &from) {
        delegate.perform({QLatin1String(action), {}, &from, [&answers, action](const CommandResult &result) {
                              answers.append(QLatin1String(action) + (result.isDone() ? u"" : u" failed"));
                          }});
    };
    store->loaded = false;
    send("join", caller);
    EXPECT_EQ(workspace.opened, QStringList{zoomLink});
    send("nonsense", caller);
    send("dismiss", caller);
    auto impatient = std::make_unique<QObject>();
    send("snooze", *impatient);
    impatient.reset();
    EXPECT_EQ(answers.join(u','), QStringLiteral("join,nonsense failed"));

    clock.time = at("2026-03-10T08:59:30Z");
    add("Planning", "2026-03-10T09:00:30Z");
    Q_EMIT store->changed();
    EXPECT_TRUE(QTest::qWaitFor([&] { return answers.size() == 3; }));
    EXPECT_FALSE(delegate.panel().isVisible());
    store->loaded = true;
    send("snooze", caller);
    send("copy", caller);
    EXPECT_EQ(answers.join(u','), QStringLiteral("join,nonsense failed,dismiss,snooze failed,copy"));
    EXPECT_EQ(pasteboard.texts, QStringList{zoomLink});
}

TEST_F(RunningApp, opensOneWindowForTheSettings)
{
    EXPECT_FALSE(settings("other"));
    EXPECT_TRUE(settings("calendars") && settings());
    delegate.reopen();
    EXPECT_EQ(windows(), QStringList{QStringLiteral("Calendars")});
    EXPECT_TRUE(settings("general"));
    EXPECT_EQ(windows(), QStringList{QStringLiteral("General")});
}

TEST_F(RunningApp, beginsWithTheWalkthroughUntilThatWasCompleted)
{
    EXPECT_EQ(windows(), QStringList());
    MemoryDefaultsStore fresh;
    AppDelegate first(parts(fresh, std::make_unique<FakeEventStore>()));
    first.launch();
    EXPECT_EQ(windows(), QStringList{QStringLiteral("Welcome to Mivora")});
}

} // namespace mivora
