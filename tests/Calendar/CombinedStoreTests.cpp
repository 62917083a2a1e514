#include "Calendar/AccessMemory.h"
#include "Calendar/CalendarFolder.h"
#include "Calendar/CombinedStore.h"
#include "Calendar/FakeEventStore.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

class CombinedStoreTest : public testing::Test
{
protected:
    CombinedStoreTest() { memory.allow(); }

    std::vector<CombinedStore::Part> parts()
    {
        std::vector<CombinedStore::Part> parts;
        parts.push_back({"folders", std::unique_ptr<EventStore>(first)});
        parts.push_back({"eds", std::unique_ptr<EventStore>(second)});
        return parts;
    }

    CalendarFolder folder;
    AccessMemory memory{QString::fromStdString(folder.path("state/access"))};
    FakeEventStore *first = new FakeEventStore;
    FakeEventStore *second = new FakeEventStore;
    CombinedStore store{parts(), memory};
};

} // namespace

TEST_F(CombinedStoreTest, givesTheBestAccessOfItsPartsOnceAllowed)
{
    using Status = AuthorizationStatus;

    struct Case
    {
        Status first;
        Status second;
        Status expected;
    };

    for (const Case &c : {Case{Status::fullAccess, Status::denied, Status::fullAccess},
                          Case{Status::restricted, Status::fullAccess, Status::fullAccess},
                          Case{Status::denied, Status::restricted, Status::restricted},
                          Case{Status::denied, Status::denied, Status::denied},
                          Case{Status::notDetermined, Status::writeOnly, Status::denied}}) {
        first->status = c.first;
        second->status = c.second;
        EXPECT_EQ(store.authorizationStatus(), c.expected);
    }
    memory.reset();
    first->status = Status::fullAccess;
    EXPECT_EQ(store.authorizationStatus(), Status::notDetermined);
}

TEST_F(CombinedStoreTest, remembersTheRequestAndAnswersWhenAllPartsHave)
{
    memory.reset();
    second->grants = false;
    std::optional<bool> answer;
    store.requestFullAccess([&](bool granted) { answer = granted; });
    EXPECT_FALSE(answer);
    EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
    EXPECT_EQ(answer, true);
    EXPECT_TRUE(AccessMemory(QString::fromStdString(folder.path("state/access"))).isAllowed());
}

TEST_F(CombinedStoreTest, keepsCalendarsOfTheSameIdentifierApart)
{
    first->storeCalendars = {{"work", "First", {}, {}}, {"home", "Home", {}, {}}};
    second->storeCalendars = {{"work", "Second", {}, {}}, {"team", "Team", {}, {}}};
    second->add("event", 0, "work");
    second->add("other", 0, "team");
    Q_EMIT second->changed();
    std::vector<std::string> ids;
    for (const StoreCalendar &calendar : store.calendars())
        ids.push_back(calendar.id);
    EXPECT_THAT(ids, testing::ElementsAre("work", "home", "eds:work", "team"));

    const StoreEvents events = store.events({}, {}, {{"eds:work"}});
    EXPECT_EQ(first->lastSelection, std::set<std::string>{});
    EXPECT_EQ(second->lastSelection, std::set<std::string>{"work"});
    EXPECT_EQ(events[0]->calendarID, "eds:work");
    EXPECT_EQ(events[1], second->storeEvents[1]);
    EXPECT_EQ(store.events({}, {}, std::nullopt)[0], events[0]);
}

TEST(AccessMemory, followsWhatAnotherProcessDecides)
{
    const CalendarFolder folder;
    const QString path = QString::fromStdString(folder.path("state/mivora/access"));
    AccessMemory mine(path);
    AccessMemory other(path);
    int changes = 0;
    QObject::connect(&mine, &AccessMemory::changed, &mine, [&] { ++changes; });
    for (int i = 1; i <= 3; ++i) {
        EXPECT_TRUE(other.allow());
        EXPECT_TRUE(waitFor([&] { return mine.isAllowed(); }));
        EXPECT_TRUE(other.reset());
        EXPECT_TRUE(waitFor([&] { return !mine.isAllowed(); }));
        EXPECT_EQ(changes, 2 * i);
    }
    EXPECT_FALSE(AccessMemory(path).isAllowed());
}

TEST(AccessMemory, takesOnlyItsOwnWord)
{
    const CalendarFolder folder;
    const QString path = QString::fromStdString(folder.path("state.json"));
    for (const auto &[text, isAllowed] : {std::pair("allowed\n", false),
                                          {"{\"calendarAccess\": \"true\"}", false},
                                          {"{\"calendarAccess\": true}", true}}) {
        folder.write("state.json", text);
        EXPECT_EQ(AccessMemory(path).isAllowed(), isAllowed) << text;
    }
}

} // namespace mivora
