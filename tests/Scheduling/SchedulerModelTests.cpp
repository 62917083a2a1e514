#include "SchedulerTest.h"

#include <QString>
#include <algorithm>
#include <array>
#include <random>
#include <tuple>

// Long random lives of a scheduler, held against the rules said in another way: the meeting wanted is the
// smallest of a sort key, and whether a panel is hidden follows from the whole history of a meeting.

namespace mivora {

namespace {

const Timestamp noon = at("2026-03-10T12:00:00Z");

/// What the user pressed for a meeting since it was last seen to appear.
struct History
{
    bool isHiddenForGood = false;
    Timestamp hiddenUntil = noon - Seconds(1e6);
};

} // namespace

class SchedulerModel : public SchedulerTest
{
public:
    int random(int below) { return std::uniform_int_distribution(0, below - 1)(generator); }

    Meeting randomMeeting()
    {
        const char *const names[] = {"a", "B", "\u00e9", "e\u0301", "z"};
        Meeting meeting =
            makeMeeting(names[random(5)], noon + Seconds(30 * random(12)), Seconds(30 * random(10)));
        meeting.id += std::to_string(random(3));
        meeting.isAllDay = random(8) == 0;
        if (random(3) == 0)
            meeting.participation = std::array{Participation::declined, Participation::tentative}[random(2)];
        return random(3) ? withLink(meeting) : meeting;
    }

    void act()
    {
        // Onto the moments that count, and a second beside them.
        clock.time += Seconds(std::array{0, 0, 0, 1, 1, 29, 30, 59}[random(8)]);
        if (!source.events.empty() && random(3) == 0)
            source.events.erase(source.events.begin() + random(int(source.events.size())));
        else if (random(2))
            source.events.push_back(randomMeeting());
        prefs.setLeadMinutes(random(3));
        prefs.setRemindWithoutLink(random(2));
        const std::string id =
            source.events.empty() ? "x" : source.events[random(int(source.events.size()))].id;
        switch (random(6)) {
        case 0:
            history[id].hiddenUntil = clock.time + Seconds(60);
            return scheduler.snooze(id);
        case 1:
            history[id].isHiddenForGood = true;
            return scheduler.dismiss(id);
        case 2:
            history[id].isHiddenForGood = true;
            return scheduler.markJoined(id);
        default:
            return scheduler.refresh();
        }
    }

    bool counts(const Meeting &meeting) const
    {
        return meeting.end > clock.time && !meeting.isAllDay &&
               meeting.participation != Participation::declined;
    }

    bool isDue(const Meeting &meeting)
    {
        const History &past = history[meeting.id];
        return !past.isHiddenForGood && clock.time >= past.hiddenUntil &&
               (prefs.remindWithoutLink() || meeting.joinLink) &&
               (meeting.start - clock.time).count() <= 60.0 * prefs.leadMinutes();
    }

    /// The meetings that count, each under the key of \a sign times its start, and in the order of the
    /// source.
    template<typename Wanted> std::optional<Meeting> smallest(int sign, Wanted wanted) const
    {
        using Key = std::tuple<double, bool, QString, std::size_t>;
        std::map<Key, Meeting> sorted;
        for (std::size_t i = 0; i < source.events.size(); ++i) {
            const Meeting &m = source.events[i];
            const QString title = QString::fromStdString(m.title).normalized(QString::NormalizationForm_C);
            if (counts(m) && wanted(m))
                sorted.emplace(Key{sign * secondsSinceEpoch(m.start), !m.joinLink, title, i}, m);
        }
        return sorted.empty() ? std::nullopt : std::optional(sorted.begin()->second);
    }

    void forgetTheGone()
    {
        std::erase_if(history, [&](const auto &entry) {
            return std::ranges::none_of(source.events,
                                        [&](const Meeting &m) { return m.id == entry.first && counts(m); });
        });
    }

    std::mt19937 generator;
    std::map<std::string, History> history;
};

TEST_F(SchedulerModel, choosesAsTheRulesSaidInAnotherWay)
{
    int panels = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        generator.seed(seed);
        source.events.clear();
        refreshAt(noon);
        history.clear();
        for (int step = 0; step < 60; ++step) {
            act();
            forgetTheGone();
            const auto panel = smallest(-1, [&](const Meeting &m) { return isDue(m); });
            ASSERT_EQ(scheduler.next(), smallest(1, [](const Meeting &) { return true; }))
                << seed << ' ' << step;
            ASSERT_EQ(scheduler.panelRequest(), panel) << seed << ' ' << step;
            panels += panel.has_value();
        }
    }
    EXPECT_GT(panels, 1500) << "the lives are too dull to show anything";
}

} // namespace mivora
