#include "SchedulerTest.h"

#include <QSignalSpy>

namespace mivora {

class SchedulerPanel : public SchedulerTest
{
public:
    const Meeting standup = withLink(makeMeeting("Standup", ten));
    const Meeting running = withLink(makeMeeting("Running", ten - Seconds(3600), Seconds(3600)));
};

TEST_F(SchedulerPanel, decisionsAreForgottenWhenTheMeetingLeavesTheList)
{
    source.known = {{"work", "Work", "", {}}, {"home", "Home", "", {}}};

    const struct
    {
        const char *name;
        std::function<void()> leave;
    } rows[] = {
        {"deleted", [this] { source.events.clear(); }},
        {"declined", [this] { source.events = {answered(standup, Participation::declined)}; }},
        {"calendar switched off", [this] { prefs.setDisabledCalendarIDs({"work"}); }},
        {"moved to tomorrow",
         [this] { source.events = {withLink(makeMeeting("Standup", ten + Seconds(86400)))}; }},
        {"access withdrawn", [this] { source.access = CalendarAuthorization::denied; }},
    };

    for (const auto &row : rows) {
        source.events = {standup};
        refreshAt(ten);
        scheduler.snooze(standup.id);
        scheduler.dismiss(standup.id);
        scheduler.markJoined(standup.id);
        row.leave();
        scheduler.refresh();
        EXPECT_TRUE(scheduler.snoozedUntil().empty() && scheduler.dismissed().empty() &&
                    scheduler.joined().empty())
            << row.name;
        source.events = {standup};
        source.access = CalendarAuthorization::granted;
        prefs.setDisabledCalendarIDs({});
        scheduler.refresh();
        EXPECT_EQ(titleOf(scheduler.panelRequest()), "Standup") << row.name;
    }
}

TEST_F(SchedulerPanel, aChangedMeetingOfTheSameIdentityIsAnnouncedButDoesNotChangeThePanel)
{
    source.events = {standup};
    refreshAt(ten);
    takeCalls();
    QSignalSpy request(&scheduler, &Scheduler::panelRequestChanged);
    source.events.front().title = "Renamed";
    source.events.front().end += Seconds(600);
    scheduler.refresh();
    EXPECT_EQ(takeCalls(), Titles{"refresh"});
    EXPECT_EQ(request.count(), 1);
    EXPECT_EQ(titleOf(scheduler.panelRequest()), "Renamed");
}

TEST_F(SchedulerPanel, propertiesAnnounceRealChangesOnly)
{
    QSignalSpy today(&scheduler, &Scheduler::todaysMeetingsChanged);
    QSignalSpy tomorrow(&scheduler, &Scheduler::tomorrowsMeetingsChanged);
    QSignalSpy next(&scheduler, &Scheduler::nextChanged);
    QSignalSpy request(&scheduler, &Scheduler::panelRequestChanged);
    const auto takeCounts = [&] {
        const std::vector<qsizetype> counts{today.count(), tomorrow.count(), next.count(), request.count()};
        for (QSignalSpy *spy : {&today, &tomorrow, &next, &request})
            spy->clear();
        return counts;
    };
    using Counts = std::vector<qsizetype>;

    refreshAt("2026-03-10T08:00:00Z");
    EXPECT_EQ(takeCounts(), (Counts{0, 0, 0, 0})) << "still nothing";
    source.events = {running, standup};
    refreshAt("2026-03-10T08:00:30Z");
    EXPECT_EQ(takeCounts(), (Counts{1, 0, 1, 0})) << "meetings appear";
    refreshAt("2026-03-10T08:01:00Z");
    EXPECT_EQ(takeCounts(), (Counts{0, 0, 0, 0})) << "nothing changed";
    source.events.back().attendeeCount = 3;
    scheduler.refresh();
    EXPECT_EQ(takeCounts(), (Counts{1, 0, 0, 0})) << "a detail of the second one changed";
    refreshAt("2026-03-10T09:00:00Z");
    EXPECT_EQ(takeCounts(), (Counts{0, 0, 0, 1})) << "due";
    source.events.push_back(makeMeeting("Tomorrow", at("2026-03-11T09:00:00Z")));
    refreshAt("2026-03-10T18:00:00Z");
    EXPECT_EQ(takeCounts(), (Counts{1, 1, 1, 1})) << "evening";
}

} // namespace mivora
