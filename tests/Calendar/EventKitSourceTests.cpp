#include "Calendar/EventKitSource.h"

#include "Calendar/CalendarFolder.h"
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
    const std::vector<std::pair<AuthorizationStatus, CalendarAuthorization>> cases{
        {AuthorizationStatus::notDetermined, CalendarAuthorization::notDetermined},
        {AuthorizationStatus::restricted, CalendarAuthorization::denied},
        {AuthorizationStatus::denied, CalendarAuthorization::denied},
        {AuthorizationStatus::fullAccess, CalendarAuthorization::granted},
        {AuthorizationStatus::writeOnly, CalendarAuthorization::denied},
    };
    for (const auto &[status, expected] : cases) {
        store->status = status;
        const std::size_t count = expected == CalendarAuthorization::granted ? 1 : 0;
        EXPECT_EQ(source.authorization(), expected);
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

TEST_F(EventKitSourceTest, queriesOnlyCalendarsThatExist)
{
    store->storeCalendars = {{"work", "Work", {}, {}}, {"home", "Home", {}, {}}};
    store->add("Meeting", 0);
    EXPECT_TRUE(titles(std::set<std::string>{}).empty());
    EXPECT_TRUE(titles(std::set<std::string>{"gone"}).empty());
    EXPECT_EQ(store->queries, 0);
    const std::set<std::string> selection{"gone", "home"};
    titles(selection);
    EXPECT_EQ(store->lastSelection, selection);
    titles();
    EXPECT_EQ(store->lastSelection, std::nullopt);
}

TEST_F(EventKitSourceTest, seesAnEditedEventAndAnotherColour)
{
    store->storeCalendars = {{"work", "Work", {}, Color{1, 2, 3}}};
    store->add("before", 0).location = "https://zoom.us/j/1";
    const Meeting before = source.meetings(Timestamp{}, Timestamp{}, std::nullopt).at(0);
    EXPECT_EQ(before.calendarColor, (Color{1, 2, 3}));
    EXPECT_TRUE(before.joinLink);

    store->storeEvents.clear();
    store->add("after", 0);
    store->storeCalendars[0].color = Color{4, 5, 6};
    const Meeting after = source.meetings(Timestamp{}, Timestamp{}, std::nullopt).at(0);
    EXPECT_EQ(after.title, "after");
    EXPECT_EQ(after.calendarColor, (Color{4, 5, 6}));
    EXPECT_FALSE(after.joinLink);
}

} // namespace mivora
