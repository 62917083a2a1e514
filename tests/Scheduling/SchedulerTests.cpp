#include "SchedulerTest.h"
#include "Scheduling/LeftOut.h"

#include <QSignalSpy>

namespace mivora {

// A day ends where the next one begins in the user's zone, which is that of the environment as the C library
// reads it: days of 23 and 25 hours, of 24 hours that begin at one o'clock, and a day that the calendar
// skipped altogether.
TEST_F(SchedulerTest, followTheUsersZone)
{
    const std::tuple<const char *, const char *, const char *, const char *> rows[] = {
        {"Europe/Berlin", "2026-03-28T20:00:00Z", "2026-03-28T23:00:00Z", "2026-03-29T22:00:00Z"},
        {"America/Sao_Paulo", "2018-11-03T23:00:00Z", "2018-11-04T03:00:00Z", "2018-11-05T02:00:00Z"},
        {"America/Havana", "2026-11-01T00:00:00Z", "2026-11-01T04:00:00Z", "2026-11-02T05:00:00Z"},
        {"Pacific/Apia", "2011-12-30T06:00:00Z", "2011-12-30T10:00:00Z", "2011-12-31T10:00:00Z"},
        {"/usr/share/zoneinfo/Asia/Tokyo", "2026-03-10T09:00:00Z", "2026-03-10T15:00:00Z",
         "2026-03-11T15:00:00Z"},
        {"UTC-5", "2026-03-10T14:00:00Z", "2026-03-10T19:00:00Z", "2026-03-11T19:00:00Z"},
        {":UTC3:30", "2026-03-11T00:00:00Z", "2026-03-11T03:30:00Z", "2026-03-12T03:30:00Z"},
        // In summer since the second Sunday of March.
        {"EST5EDT4", "2026-03-11T00:00:00Z", "2026-03-11T04:00:00Z", "2026-03-12T04:00:00Z"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2026-03-28T20:00:00Z", "2026-03-28T23:00:00Z",
         "2026-03-29T22:00:00Z"},
        {"", "2026-03-10T20:00:00Z", "2026-03-11T00:00:00Z", "2026-03-12T00:00:00Z"},
        {"Nowhere", "2026-03-10T20:00:00Z", "2026-03-11T00:00:00Z", "2026-03-12T00:00:00Z"},
    };
    const QByteArray before = qgetenv("TZ");
    Scheduler ofTheSystem(source, prefs, clock);
    for (const auto &[zone, now, startOfTomorrow, startOfDayAfter] : rows) {
        qputenv("TZ", zone);
        source.fetches.clear();
        clock.time = at(now);
        ofTheSystem.refresh();
        const std::vector<FakeEventSource::Fetch> expected{
            {at(now), at(startOfTomorrow), std::nullopt},
            {at(startOfTomorrow), at(startOfDayAfter), std::nullopt}};
        EXPECT_EQ(source.fetches, expected) << zone << ' ' << now;
    }
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
}

TEST_F(SchedulerTest, tomorrowIsShownInTheEveningWhenNothingIsLeft)
{
    const std::tuple<const char *, const char *, bool> rows[] = {
        {"Europe/Berlin", "2026-03-10T16:30:00Z", false}, // half past five
        // A day of 25 hours: eighteen of them are over one hour earlier.
        {"Europe/Berlin", "2026-10-25T16:59:00Z", false},
        {"Europe/Berlin", "2026-10-25T17:00:00Z", true},
    };
    for (const auto &[zone, now, isShown] : rows) {
        scheduler.setTimeZone(QTimeZone(zone));
        source.fetches.clear();
        source.events = {makeMeeting("Tomorrow", at(now) + Seconds(16 * 3600))};
        refreshAt(now);
        EXPECT_EQ(titles(scheduler.tomorrowsMeetings()), isShown ? Titles{"Tomorrow"} : Titles()) << now;
        EXPECT_EQ(source.fetches.size(), isShown ? 2u : 1u) << now;
        EXPECT_FALSE(scheduler.next()) << now;
    }
}

TEST_F(SchedulerTest, onlyEnabledCalendarsAreRead)
{
    using Selection = std::optional<std::set<std::string>>;
    source.known = {{"work", "Work", "", {}}, {"home", "Home", "", {}}};
    const std::pair<std::set<std::string>, Selection> rows[] = {{{}, std::nullopt},
                                                                {{"home"}, Selection({"work"})},
                                                                {{"gone"}, Selection({"work", "home"})},
                                                                {{"home", "work"}, Selection(std::in_place)}};
    for (const auto &[disabled, selection] : rows) {
        prefs.setDisabledCalendarIDs(disabled);
        source.fetches.clear();
        refreshAt("2026-03-10T19:00:00Z");
        ASSERT_EQ(source.fetches.size(), 2u);
        EXPECT_EQ(std::get<2>(source.fetches[0]), selection);
        EXPECT_EQ(std::get<2>(source.fetches[1]), selection);
    }
}

TEST_F(SchedulerTest, leavesOutWhatHasOneOfTheTitles)
{
    const std::string endless(8000, 'a'), hostile = QStringLiteral("*a").repeated(2000).toStdString() + 'b';
    const std::tuple<std::string, std::string, bool> rows[] = {
        {"a*bc*bc", "abcbcbc", true},
        {" ?Caf\u00c9 bar", "\U0001F600cafe\u0301\n\tBar", true},
        {"stra?e*", "Stra\u00dfe", true},
        {"STRASSE", "Stra\u00dfe", true},
        {"[a].", "a", false},
        {"", "Untitled", false},
        {hostile, endless, false},
        {hostile, endless + 'b', true},
    };
    for (const auto &[pattern, title, isLeftOut] : rows) {
        prefs.setIgnoredTitles({QStringLiteral("other"), QString::fromStdString(pattern)});
        EXPECT_NE(leftOutReason(makeMeeting(title, ten), prefs).isEmpty(), isLeftOut) << title.substr(0, 9);
    }
}

TEST_F(SchedulerTest, withoutAccessAllIsEmptyAndNothingIsFetched)
{
    source.events = {withLink(makeMeeting("M", at("2026-03-10T19:00:00Z")))};
    refreshAt("2026-03-10T19:00:00Z");
    source.fetches.clear();
    source.access = CalendarAuthorization::denied;
    refreshAt("2026-03-10T19:00:30Z");
    EXPECT_TRUE(scheduler.todaysMeetings().empty() && scheduler.tomorrowsMeetings().empty());
    EXPECT_FALSE(scheduler.next());
    EXPECT_TRUE(source.fetches.empty());
    EXPECT_EQ(takeCalls(), (Titles{"panel M", "refresh", "panel none", "refresh"}));
}

class SchedulerPanel : public SchedulerTest
{
public:
    const Meeting standup = withLink(makeMeeting("Standup", ten));
    const Meeting running = withLink(makeMeeting("Running", ten - Seconds(3600), Seconds(3600)));
};

// Who is next, and whose panel is due: rows in the order of the source, the time in seconds before ten.
TEST_F(SchedulerPanel, isThatOfTheMeetingWhichTheRulesChoose)
{
    const Meeting plain = makeMeeting("A", ten);
    const Meeting alpha = withLink(makeMeeting("Alpha", ten)), budget = withLink(makeMeeting("Budget", ten));
    const Meeting composed = withLink(makeMeeting("\u00e9", ten));
    const Meeting decomposed = withLink(makeMeeting("e\u0301", ten));
    const Meeting later = withLink(makeMeeting("Later", ten + Seconds(60)));
    Meeting declined = alpha, tentative = alpha, wholeDay = budget;
    declined.participation = Participation::declined;
    tentative.participation = Participation::tentative;
    wholeDay.isAllDay = true;

    const struct
    {
        const char *name;
        std::vector<Meeting> events;
        double before;
        const char *next;
        const char *panel;
        int leadMinutes = 1;
        bool remindsWithoutLink = false;
    } rows[] = {
        {"nothing", {}, 0, "none", "none"},
        {"not yet due", {alpha}, 60.001, "Alpha", "none"},
        {"due", {alpha}, 60, "Alpha", "Alpha"},
        {"five minutes before", {alpha}, 300, "Alpha", "Alpha", 5},
        {"at the start", {alpha}, 0, "Alpha", "Alpha", 0},
        {"a moment before the start", {alpha}, 0.001, "Alpha", "none", 0},
        {"to the end", {alpha}, -1799.9, "Alpha", "Alpha"},
        {"over", {alpha}, -1800, "none", "none"},
        {"a link before the title", {plain, budget}, 0, "Budget", "Budget"},
        {"the title", {budget, alpha}, 0, "Alpha", "Alpha"},
        {"equal titles: the first", {decomposed, composed}, 0, "e\u0301", "e\u0301"},
        {"the later one has the panel", {alpha, later}, 0, "Alpha", "Later"},
        {"whatever the order", {later, alpha}, 0, "Alpha", "Later"},
        {"without a link", {plain}, 0, "A", "none"},
        {"without a link, wanted", {plain}, 0, "A", "A", 1, true},
        {"declined, or of a whole day", {declined, wholeDay}, 0, "none", "none"},
        {"tentative", {tentative}, 0, "Alpha", "Alpha"},
    };

    for (const auto &row : rows) {
        source.events = row.events;
        prefs.setLeadMinutes(row.leadMinutes);
        prefs.setRemindWithoutLink(row.remindsWithoutLink);
        refreshAt(ten - Seconds(row.before));
        EXPECT_EQ(titleOf(scheduler.next()), row.next) << row.name;
        EXPECT_EQ(titleOf(scheduler.panelRequest()), row.panel) << row.name;
    }
}

TEST_F(SchedulerPanel, hidesForAMinuteOrForGood)
{
    source.events = {standup};
    refreshAt(ten + Seconds(10));
    scheduler.snooze(standup.id);
    EXPECT_EQ(takeCalls(), (Titles{"panel Standup", "refresh", "panel none", "refresh"}));
    refreshAt(ten + Seconds(69.999));
    EXPECT_FALSE(scheduler.panelRequest());
    refreshAt(ten + Seconds(70));
    EXPECT_TRUE(scheduler.panelRequest());
    for (const auto decision : {&Scheduler::dismiss, &Scheduler::markJoined}) {
        (scheduler.*decision)(standup.id);
        refreshAt(ten + Seconds(1000));
        EXPECT_FALSE(scheduler.panelRequest());
        source.events.clear();
        scheduler.refresh();
        source.events = {standup};
        scheduler.refresh();
        EXPECT_TRUE(scheduler.panelRequest()) << "came back, and starts afresh";
    }
}

TEST_F(SchedulerPanel, isAnnouncedWhenAnotherMeetingHasItAndEverythingWhenItChanges)
{
    QSignalSpy changed(&scheduler, &Scheduler::changed);
    const Meeting tomorrow = makeMeeting("Tomorrow", at("2026-03-11T09:00:00Z"));
    Meeting renamed = standup;
    renamed.title = "Renamed";
    const std::vector<Meeting> both{running, standup};

    const struct
    {
        const char *name;
        std::vector<Meeting> events;
        Timestamp now;
        const char *panel;
        bool isChange;
    } rows[] = {
        {"still nothing", {}, ten - Seconds(7200), "", false},
        {"meetings appear", both, ten - Seconds(7000), "", true},
        {"nothing changed", both, ten - Seconds(6000), "", false},
        {"due", both, ten - Seconds(3660), "panel Running", true},
        {"the next one takes over", both, ten - Seconds(60), "panel Standup", true},
        {"only the title is another one", {running, renamed}, ten - Seconds(60), "", true},
        {"evening", {standup, tomorrow}, at("2026-03-10T18:00:00Z"), "panel none", true},
        {"tomorrow's is moved", {}, at("2026-03-10T18:00:30Z"), "", true},
    };

    for (const auto &row : rows) {
        source.events = row.events;
        refreshAt(row.now);
        EXPECT_EQ(takeCalls(), *row.panel ? (Titles{row.panel, "refresh"}) : Titles{"refresh"}) << row.name;
        EXPECT_EQ(changed.count(), row.isChange ? 1 : 0) << row.name;
        changed.clear();
    }
}

TEST_F(SchedulerPanel, changesNextByTimeAloneWhenItSays)
{
    prefs.setLeadMinutes(5);
    source.events = {withLink(makeMeeting("A", ten, Seconds(600)))};
    const std::pair<const char *, const char *> rows[] = {
        {"2026-03-10T08:58:30Z", "2026-03-10T09:55:00Z"}, // the panel
        {"2026-03-10T09:55:00Z", "2026-03-10T10:00:00Z"}, // the start
        {"2026-03-10T10:00:00Z", "2026-03-10T10:10:00Z"}, // the end
        {"2026-03-10T10:10:00Z", "2026-03-10T18:00:00Z"}, // the evening
        {"2026-03-10T18:00:00Z", "2026-03-11T00:00:00Z"}, // the day
    };
    for (const auto &[now, change] : rows) {
        refreshAt(now);
        EXPECT_EQ(scheduler.nextChangeAfter(clock.time), at(change)) << now;
    }
    refreshAt("2026-03-10T09:56:00Z");
    scheduler.snooze(source.events.front().id);
    EXPECT_EQ(scheduler.nextChangeAfter(clock.time), at("2026-03-10T09:57:00Z"));
}

// What is told of meetings, row after row: the time is in seconds after ten.
TEST_F(SchedulerPanel, isToldOfOnceAndInOrder)
{
    const Meeting alpha = withLink(makeMeeting("Alpha", ten)), beta = withLink(makeMeeting("Beta", ten));
    const Meeting plain = makeMeeting("Plain", ten + Seconds(60), Seconds(600));
    const Meeting moved = withLink(makeMeeting("Alpha", ten + Seconds(300)));
    const Meeting brief = withLink(makeMeeting("Brief", ten + Seconds(3600), Seconds(60)));
    const Meeting night = withLink(makeMeeting("Night", ten + Seconds(13 * 3600), Seconds(7200)));

    const std::tuple<const char *, std::vector<Meeting>, double, const char *> rows[] = {
        {"due, both", {beta, alpha}, -60, "Due Alpha, Due Beta, "},
        {"asleep over the start", {beta, alpha, plain}, 60, "Started Alpha, Started Beta, Started Plain, "},
        {"the clock is set back", {beta, alpha, plain}, -90, ""},
        {"to another day", {beta, alpha, plain}, -86'400, ""},
        {"and forth", {beta, alpha, plain}, 200, ""},
        {"one is moved", {beta, moved, plain}, 210, "Ended Alpha, "},
        {"due while others run", {beta, moved, plain}, 240, "Due Alpha, "},
        {"one over, one cancelled, one begins",
         {moved, plain},
         660,
         "Ended Beta, Ended Plain, Started Alpha, "},
        {"back, as before the end", {moved, plain}, 300, ""},
        {"the cancelled one is there again", {beta, moved}, 700, "Due Beta, Started Beta, "},
        {"both over, one slept through", {beta, moved, brief}, 4000, "Ended Beta, Ended Alpha, "},
        {"asleep until late", {night}, 46'801, "Due Night, Started Night, "},
        {"midnight", {night}, 50'400, ""},
    };
    for (const auto &[name, events, after, told] : rows) {
        source.events = events;
        refreshAt(ten + Seconds(after));
        EXPECT_EQ(std::exchange(happened, {}), told) << name;
    }
    scheduler.markJoined(night.id);
    scheduler.markJoined(night.id);
    source.access = CalendarAuthorization::denied;
    scheduler.refresh();
    EXPECT_EQ(happened, "Joined Night, Ended Night, ");
}

} // namespace mivora
