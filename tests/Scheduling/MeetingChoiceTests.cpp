#include "Scheduling/MeetingChoice.h"

#include "Scheduling/Decisions.h"
#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

using Titles = std::vector<std::string>;

} // namespace

TEST(RelevantMeetings, keepsOnlyTheUsersUnfinishedOnes)
{
    const Meeting meeting = makeMeeting("M", ten, Seconds(3600));

    const struct
    {
        const char *name;
        Meeting meeting;
        const char *now;
        bool isKept;
    } rows[] = {
        {"not begun", meeting, "2026-03-10T09:00:00Z", true},
        {"running", meeting, "2026-03-10T10:59:59.999Z", true},
        {"ends now", meeting, "2026-03-10T11:00:00Z", false},
        {"ended a second ago", meeting, "2026-03-10T11:00:01Z", false},
        {"without length, now", makeMeeting("M", ten, Seconds(0)), "2026-03-10T10:00:00Z", false},
        {"whole day", allDay(meeting), "2026-03-10T09:00:00Z", false},
        {"declined", answered(meeting, Participation::declined), "2026-03-10T09:00:00Z", false},
        {"tentative", answered(meeting, Participation::tentative), "2026-03-10T09:00:00Z", true},
    };

    for (const auto &row : rows)
        EXPECT_EQ(!relevantMeetings({row.meeting}, at(row.now)).empty(), row.isKept) << row.name;
}

TEST(RelevantMeetings, areSortedByStartThenTitle)
{
    const auto sorted = relevantMeetings({makeMeeting("Late", ten + Seconds(1)), makeMeeting("b", ten),
                                          makeMeeting("Same", ten), makeMeeting("Zoë", ten),
                                          makeMeeting("Early", ten - Seconds(0.5))},
                                         ten);
    EXPECT_EQ(titles(sorted), (Titles{"Early", "Same", "Zoë", "b", "Late"}));
}

TEST(RelevantMeetings, keepTheOrderInWhichEqualsCame)
{
    // More than the few that any sort happens to leave in order.
    std::vector<Meeting> meetings;
    for (int i = 0; i < 100; ++i) {
        meetings.push_back(makeMeeting(i % 2 ? "Caf\u00e9" : "Cafe\u0301", ten));
        meetings.back().id = std::to_string(i);
    }
    EXPECT_EQ(relevantMeetings(meetings, ten), meetings);
}

TEST(PanelMeeting, isDueFromItsLeadTimeUnlessDecidedOtherwise)
{
    const Meeting linked = withLink(makeMeeting("M", ten));
    const Meeting plain = makeMeeting("M", ten);
    const PanelRules minute;
    const Decisions none;
    const auto snoozedTo = [&](Seconds afterStart) {
        return Decisions{{{linked.id, ten + afterStart}}, {}, {}};
    };

    const struct
    {
        const char *name;
        Meeting meeting;
        Decisions decisions;
        PanelRules rules;
        Seconds afterStart;
        bool isDue;
    } rows[] = {
        {"at the lead time", linked, none, minute, Seconds(-60), true},
        {"just before the lead time", linked, none, minute, Seconds(-60.001), false},
        {"no lead: at the start", linked, none, {.lead = Seconds(0)}, Seconds(0), true},
        {"no lead: just before the start", linked, none, {.lead = Seconds(0)}, Seconds(-0.001), false},
        {"long begun", linked, none, minute, Seconds(86400), true},
        {"no link", plain, none, minute, Seconds(0), false},
        {"no link, reminded", plain, none, {.remindWithoutLink = true}, Seconds(0), true},
        {"dismissed", linked, {{}, {linked.id}, {}}, minute, Seconds(0), false},
        {"joined", linked, {{}, {}, {linked.id}}, minute, Seconds(0), false},
        {"another dismissed", linked, {{}, {"other"}, {"other"}}, minute, Seconds(0), true},
        {"snoozed", linked, snoozedTo(Seconds(30)), minute, Seconds(29.999), false},
        {"snooze over", linked, snoozedTo(Seconds(30)), minute, Seconds(30), true},
        {"snooze over before it is due", linked, snoozedTo(Seconds(-90)), minute, Seconds(-89), false},
    };

    for (const auto &row : rows)
        EXPECT_EQ(panelMeeting({row.meeting}, row.decisions, row.rules, ten + row.afterStart).has_value(),
                  row.isDue)
            << row.name;
}

} // namespace mivora
