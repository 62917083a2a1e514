#include "Calendar/EventKitSource.h"

#include "Calendar/CalendarLoader.h"
#include "Calendar/FakeEventStore.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using testing::ElementsAre;

class EventKitSourceTest : public testing::Test
{
protected:
    std::vector<std::string> titles(const std::optional<std::set<std::string>> &ids = std::nullopt)
    {
        std::vector<std::string> titles;
        for (const Meeting &meeting : source.meetings(Timestamp{}, Timestamp{}, ids))
            titles.push_back(meeting.title);
        return titles;
    }

    FakeEventStore *store = new FakeEventStore;
    EventKitSource source{std::unique_ptr<EventStore>(store)};
};

} // namespace

TEST_F(EventKitSourceTest, mapsTheAuthorizationAndGivesNothingWithoutFullAccess)
{
    store->storeCalendars = {{"work", "Work", {}, {}}};
    store->add("Meeting", 0);
    for (const auto &[status, expected] :
         {std::pair(AuthorizationStatus::notDetermined, CalendarAuthorization::notDetermined),
          {AuthorizationStatus::restricted, CalendarAuthorization::denied},
          {AuthorizationStatus::denied, CalendarAuthorization::denied},
          {AuthorizationStatus::fullAccess, CalendarAuthorization::granted},
          {AuthorizationStatus::writeOnly, CalendarAuthorization::denied}}) {
        store->status = status;
        const std::size_t count = expected == CalendarAuthorization::granted ? 1 : 0;
        EXPECT_EQ(source.authorization(), expected);
        EXPECT_EQ(source.isNothingToRead(), status == AuthorizationStatus::denied);
        EXPECT_EQ(source.calendars().size(), count);
        EXPECT_EQ(titles().size(), count);
    }
}

TEST_F(EventKitSourceTest, sortsMeetingsByStartThenTitleAndDropsNone)
{
    store->add("later", 7200);
    store->add("b", 3600).isAllDay = true;
    store->add("B", 3600);
    store->add("a\xcc\x88", 3600);
    store->add("  ", 0).title = "  ";
    EXPECT_THAT(titles(), ElementsAre("Untitled", "B", "b", "a\xcc\x88", "later"));
}

TEST_F(EventKitSourceTest, sortsCalendarsByAccountThenTitle)
{
    store->storeCalendars = {
        {"1", "b", "Work", {}}, {"2", "a", "Work", {}}, {"3", "Z", "", {}}, {"4", "z", {}, {}}};
    std::vector<std::string> ids;
    for (const CalendarInfo &calendar : source.calendars())
        ids.push_back(calendar.id);
    EXPECT_THAT(ids, ElementsAre("3", "4", "2", "1"));
}

TEST_F(EventKitSourceTest, queriesOnlyCalendarsThatExistAndTakesTheirColours)
{
    store->storeCalendars = {{"home", "Home", {}, Color{9, 9, 9}}, {"work", "Work", {}, Color{1, 2, 3}}};
    store->add("At work", 0);
    store->add("At home", 0, "home");
    EXPECT_THAT(titles(std::set<std::string>{}), ElementsAre());
    EXPECT_THAT(titles(std::set<std::string>{"gone"}), ElementsAre());
    EXPECT_EQ(store->queries, 0);
    EXPECT_THAT(titles(std::set<std::string>{"gone", "home"}), ElementsAre("At home"));
    EXPECT_THAT(titles(), ElementsAre("At home", "At work"));
    EXPECT_EQ(source.meetings({}, {}, {}).at(1).calendarColor, (Color{1, 2, 3}));
    store->storeCalendars.clear();
    EXPECT_EQ(source.meetings({}, {}, {}).at(1).calendarColor, std::nullopt);
}

TEST(CalendarColor, isANameOrANumber)
{
    const std::pair<const char *, std::optional<Color>> cases[] = {
        {"DarkSlateGrey", Color{47, 79, 79}},
        {"rebeccaPurple", Color{102, 51, 153}},
        {"#0a0b0c", Color{10, 11, 12}},
        {"rgb(53,132,999)", Color{53, 132, 255}},
        {"rgba(53, 132, 228, 0.5)", Color{53, 132, 228}},
        {"rgb(53,132)", std::nullopt},
        {"transparent", std::nullopt},
        {"no colour", std::nullopt},
    };
    for (const auto &[text, color] : cases)
        EXPECT_EQ(colorFrom(text), color) << text;
}

} // namespace mivora
