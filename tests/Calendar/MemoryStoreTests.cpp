#include "Calendar/AccessMemory.h"
#include "Calendar/CalendarFolder.h"
#include "Calendar/MemoryStore.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using Status = AuthorizationStatus;
using testing::ElementsAre;

/// A loader that says what the test has it say.
class FakeLoader final : public CalendarLoader
{
public:
    void start(const EventWindow &window, Deliver deliver) override
    {
        windows.push_back(window);
        m_deliver = std::move(deliver);
    }

    void setWindow(const EventWindow &window) override { windows.push_back(window); }

    void tell(StoreUpdate update)
    {
        m_deliver(std::move(update));
        QCoreApplication::processEvents();
    }

    std::vector<EventWindow> windows;

private:
    Deliver m_deliver;
};

std::shared_ptr<const Meeting> meeting(const std::string &title, double start, double end,
                                       const std::string &calendar = "work")
{
    return std::make_shared<const Meeting>(Meeting{.title = title,
                                                   .start = timestampFromSeconds(start),
                                                   .end = timestampFromSeconds(end),
                                                   .calendarID = calendar});
}

class MemoryStoreTest : public testing::Test
{
protected:
    MemoryStoreTest()
    {
        QCoreApplication::processEvents();
        EXPECT_TRUE(first->windows.empty()) << "nothing is read before it may";
        access.allow();
        QObject::connect(&store, &EventStore::changed, &store, [this] { ++changes; });
        QCoreApplication::processEvents();
    }

    MemoryStore::Loaders loaders()
    {
        MemoryStore::Loaders loaders;
        loaders.push_back(std::unique_ptr<CalendarLoader>(first));
        loaders.push_back(std::unique_ptr<CalendarLoader>(second));
        return loaders;
    }

    std::vector<std::string> titles(double from, double to,
                                    const std::optional<std::set<std::string>> &ids = {})
    {
        std::vector<std::string> titles;
        for (const auto &found : store.meetings(timestampFromSeconds(from), timestampFromSeconds(to), ids))
            titles.push_back(found->title);
        return titles;
    }

    CalendarFolder folder;
    AccessMemory access{QString::fromStdString(folder.path("state"))};
    FakeLoader *first = new FakeLoader;
    FakeLoader *second = new FakeLoader;
    EventWindow window = windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc());
    MemoryStore store{access, window, loaders()};
    int changes = 0;
};

} // namespace

TEST_F(MemoryStoreTest, givesTheBestAccessOfItsLoadersOnceAllowed)
{
    EXPECT_EQ(store.authorizationStatus(), Status::fullAccess) << "until it is known";
    // Of the loaders, and of the store.
    for (const auto &[one, other, expected] :
         {std::array{Status::fullAccess, Status::denied, Status::fullAccess},
          {Status::restricted, Status::fullAccess, Status::fullAccess},
          {Status::denied, Status::restricted, Status::restricted},
          {Status::denied, Status::denied, Status::denied}}) {
        first->tell({.status = one});
        second->tell({.status = other});
        EXPECT_EQ(store.authorizationStatus(), expected);
    }
    access.reset();
    EXPECT_EQ(store.authorizationStatus(), Status::notDetermined);
}

TEST_F(MemoryStoreTest, remembersTheRequestAndAnswersWhenAllIsLoaded)
{
    access.reset();
    std::vector<bool> answers;
    store.requestFullAccess([&](bool granted) { answers.push_back(granted); });
    EXPECT_TRUE(AccessMemory(QString::fromStdString(folder.path("state"))).isAllowed());
    first->tell({.status = Status::denied});
    EXPECT_FALSE(store.isLoaded());
    EXPECT_THAT(answers, ElementsAre());
    second->tell({.status = Status::fullAccess});
    EXPECT_TRUE(store.isLoaded());
    EXPECT_THAT(answers, ElementsAre(true));
    second->tell({.status = Status::denied});
    store.requestFullAccess([&](bool granted) { answers.push_back(granted); });
    EXPECT_THAT(answers, ElementsAre(true)) << "later";
    QCoreApplication::processEvents();
    EXPECT_THAT(answers, ElementsAre(true, false));
}

TEST_F(MemoryStoreTest, holdsWhatItIsToldAndTellsWhatIsNew)
{
    const auto early = meeting("early", 100, 200), late = meeting("late", 300, 400);
    first->tell({.changes = {.added = {late, early}},
                 .calendars = {{{"work", "Work", {}, {}}}},
                 .status = Status::fullAccess});
    second->tell({.changes = {.added = {meeting("home", 150, 160, "home")}},
                  .calendars = {{{"home", "Home", {}, {}}}},
                  .status = Status::fullAccess});
    EXPECT_EQ(changes, 2);
    EXPECT_THAT(titles(0, 1000), ElementsAre("early", "home", "late"));
    EXPECT_THAT(titles(0, 1000, {{"work"}}), ElementsAre("early", "late"));
    ASSERT_EQ(store.calendars().size(), 2U);
    EXPECT_EQ(store.calendars()[1].title, "Home");
    first->tell({.changes = {.removed = {early}}, .status = Status::fullAccess});
    EXPECT_THAT(titles(0, 1000), ElementsAre("home", "late"));
    first->tell({.status = Status::fullAccess});
    EXPECT_EQ(changes, 3) << "nothing new";
    first->tell({.status = Status::fullAccess, .isLoaded = false});
    EXPECT_EQ(changes, 4);
}

TEST_F(MemoryStoreTest, findsWhatOverlaps)
{
    // From 100 to 200.
    first->tell(
        {.changes = {.added = {meeting("around it", 0, 300), meeting("before", 0, 50),
                               meeting("ends at the start", 0, 100), meeting("runs into it", 0, 101),
                               meeting("no length before", 99, 99),
                               meeting("no length at its start", 100, 100),
                               meeting("no length inside", 150, 150), meeting("runs out of it", 199, 250),
                               meeting("starts at its end", 200, 250),
                               meeting("no length at its end", 200, 200), meeting("last", 300, 300)}}});
    EXPECT_THAT(titles(100, 200), ElementsAre("around it", "runs into it", "no length at its start",
                                              "no length inside", "runs out of it"));
    EXPECT_THAT(titles(300, 400), ElementsAre("last"));
}

TEST_F(MemoryStoreTest, hasTheDaysLoadedThatAreAskedFor)
{
    // Two days in turn, as time passes: each is loaded a day ahead of need, and once.
    const Timestamp start = at("2026-03-10T00:00:00Z");
    constexpr Seconds day{86400};
    for (int hour = 0; hour < 10 * 24; ++hour) {
        const Timestamp from = start + Seconds(3600 * hour);
        const EventWindow loaded = first->windows.back();
        EXPECT_TRUE(loaded.from <= from && from + 2 * day <= loaded.to) << hour;
        store.meetings(from, from + day, {});
        store.meetings(from + day, from + 2 * day, {});
    }
    EXPECT_LT(first->windows.size(), 10U);
    EXPECT_EQ(second->windows.size(), first->windows.size());
    // Far away, and back: both stay loaded.
    store.meetings(at("2026-07-20T00:00:00Z"), at("2026-07-21T00:00:00Z"), {});
    const std::size_t count = first->windows.size();
    for (const char *from : {"2026-03-19T00:00:00Z", "2026-07-20T00:00:00Z", "2026-03-19T00:00:00Z"})
        store.meetings(at(from), at(from) + day, {});
    EXPECT_EQ(first->windows.size(), count);
    store.setTimeZone(QTimeZone::utc());
    EXPECT_EQ(first->windows.size(), count) << "the zone that it is";
    store.setTimeZone(QTimeZone("America/New_York"));
    EXPECT_EQ(first->windows.back().zone, QTimeZone("America/New_York"));
    EXPECT_EQ(first->windows.back().from, first->windows[count - 1].from);
    store.meetings(Timestamp::min(), Timestamp::max(), {});
    EXPECT_LT(first->windows.back().to - first->windows.back().from, 410 * day);
}

TEST(AccessMemory, takesTheWordOfAnotherProcessAlone)
{
    const CalendarFolder folder;
    const QString path = QString::fromStdString(folder.path("state.json"));
    AccessMemory mine(path), other(path);
    int changes = 0;
    QObject::connect(&mine, &AccessMemory::changed, &mine, [&] { ++changes; });
    EXPECT_TRUE(other.allow());
    EXPECT_TRUE(waitFor([&] { return mine.isAllowed(); }));
    EXPECT_TRUE(other.reset());
    EXPECT_TRUE(waitFor([&] { return !mine.isAllowed(); }));
    EXPECT_EQ(changes, 2);
    for (const auto &[text, isAllowed] : {std::pair("allowed\n", false),
                                          {"{\"calendarAccess\": \"true\"}", false},
                                          {"{\"calendarAccess\": true}", true}}) {
        folder.write("state.json", text);
        EXPECT_EQ(AccessMemory(path).isAllowed(), isAllowed) << text;
    }
    folder.write("state.json", "{}");
    AccessMemory given(path, AccessMemory::Permission::given);
    EXPECT_TRUE(given.reset() && given.isAllowed());
    EXPECT_FALSE(AccessMemory(path).isAllowed());
}

} // namespace mivora
