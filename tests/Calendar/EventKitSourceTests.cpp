#include "Calendar/AccessMemory.h"
#include "Calendar/CalendarFolder.h"
#include "Calendar/EventKitSource.h"
#include "Calendar/FakeLoader.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using Status = AuthorizationStatus;
using testing::ElementsAre;

std::shared_ptr<const Meeting> meeting(const std::string &title, double start, double end,
                                       const std::string &calendar = "work")
{
    return std::make_shared<const Meeting>(Meeting{.title = title,
                                                   .start = timestampFromSeconds(start),
                                                   .end = timestampFromSeconds(end),
                                                   .calendarID = calendar});
}

class EventKitSourceTest : public testing::Test
{
protected:
    EventKitSourceTest()
    {
        QCoreApplication::processEvents();
        EXPECT_TRUE(first->windows.empty()) << "nothing is read before it may";
        access.allow();
        QObject::connect(&source, &EventKitSource::changed, &source, [this] { ++changes; });
        QCoreApplication::processEvents();
    }

    EventKitSource::Loaders loaders()
    {
        EventKitSource::Loaders loaders;
        loaders.push_back(std::unique_ptr<CalendarLoader>(first));
        loaders.push_back(std::unique_ptr<CalendarLoader>(second));
        return loaders;
    }

    std::vector<std::string> found(double from, double to,
                                   const std::optional<std::set<std::string>> &ids = {})
    {
        return titles(source.meetings(timestampFromSeconds(from), timestampFromSeconds(to), ids));
    }

    CalendarFolder folder;
    AccessMemory access{QString::fromStdString(folder.path("state"))};
    FakeLoader *first = new FakeLoader;
    FakeLoader *second = new FakeLoader;
    EventWindow window = windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc());
    EventKitSource source{access, window, loaders()};
    int changes = 0;
};

} // namespace

TEST_F(EventKitSourceTest, givesTheBestAccessOfItsLoadersOnceAllowedAndNothingWithoutFullAccess)
{
    EXPECT_EQ(source.authorizationStatus(), Status::fullAccess) << "until it is known";
    // Of the loaders, and of the source.
    for (const auto &[one, other, expected] :
         {std::array{Status::fullAccess, Status::denied, Status::fullAccess},
          {Status::restricted, Status::fullAccess, Status::fullAccess},
          {Status::denied, Status::restricted, Status::restricted},
          {Status::denied, Status::denied, Status::denied}}) {
        first->tell({.meetings = {meeting("M", 0, 1)}, .calendars = {{"work", "", {}, {}}}, .status = one});
        second->tell({.status = other});
        const bool isGranted = expected == Status::fullAccess;
        EXPECT_EQ(source.authorizationStatus(), expected);
        EXPECT_EQ(source.authorization(),
                  isGranted ? CalendarAuthorization::granted : CalendarAuthorization::denied);
        EXPECT_EQ(source.isNothingToRead(), expected == Status::denied);
        EXPECT_EQ(found(0, 1).size() + source.calendars().size(), isGranted ? 2u : 0u);
    }
    access.reset();
    EXPECT_EQ(source.authorization(), CalendarAuthorization::notDetermined);
}

TEST_F(EventKitSourceTest, remembersTheRequestAndAnswersWhenAllIsLoaded)
{
    access.reset();
    std::vector<bool> answers;
    source.requestAccess([&](bool granted) { answers.push_back(granted); });
    EXPECT_TRUE(AccessMemory(QString::fromStdString(folder.path("state"))).isAllowed());
    first->tell({.status = Status::denied});
    EXPECT_FALSE(source.isLoaded());
    EXPECT_THAT(answers, ElementsAre());
    second->tell({.status = Status::fullAccess});
    EXPECT_TRUE(source.isLoaded());
    EXPECT_THAT(answers, ElementsAre(true));
    second->tell({.status = Status::denied});
    source.requestAccess([&](bool granted) { answers.push_back(granted); });
    EXPECT_THAT(answers, ElementsAre(true)) << "later";
    QCoreApplication::processEvents();
    EXPECT_THAT(answers, ElementsAre(true, false));
}

TEST_F(EventKitSourceTest, holdsWhatItIsToldAndTellsWhatIsNew)
{
    int calls = 0;
    source.setOnChange([&] { ++calls; });
    const auto early = meeting("early", 100, 200), late = meeting("late", 300, 400);
    const StoreUpdate update{.meetings = {late, early},
                             .calendars = {{"work", "Work", {}, Color{1, 2, 3}}},
                             .status = Status::fullAccess};
    first->tell(update);
    second->tell({.meetings = {meeting("home", 150, 160, "home")},
                  .calendars = {{"home", "Home", {}, {}}},
                  .status = Status::fullAccess});
    EXPECT_EQ(changes, 2);
    EXPECT_THAT(found(0, 1000), ElementsAre("early", "home", "late"));
    EXPECT_EQ(source.meetings({}, late->end, {})[2].calendarColor, (Color{1, 2, 3}));
    EXPECT_THAT(found(0, 1000, {{"work", "gone"}}), ElementsAre("early", "late"));
    EXPECT_THAT(found(0, 1000, std::set<std::string>()), ElementsAre());
    StoreUpdate same = update;
    same.meetings = {std::make_shared<const Meeting>(*early), late};
    first->tell(same);
    EXPECT_EQ(changes, 2) << "nothing new";
    same.isLoaded = false;
    first->tell(same);
    EXPECT_EQ(changes, 3);
    first->tell({.meetings = {late}, .calendars = update.calendars, .status = Status::fullAccess});
    EXPECT_EQ(changes, 4);
    EXPECT_EQ(calls, changes);
    EXPECT_THAT(found(0, 1000), ElementsAre("home", "late"));
}

TEST_F(EventKitSourceTest, sortsByTitleWithinATimeAndWithinAnAccount)
{
    first->tell({.meetings = {meeting("later", 2, 3), meeting("b", 1, 3), meeting("B", 1, 3),
                              meeting("a\xcc\x88", 1, 3)},
                 .calendars =
                     {{"1", "b", "Work", {}}, {"2", "a", "Work", {}}, {"3", "Z", "", {}}, {"4", "z", {}, {}}},
                 .status = Status::fullAccess});
    EXPECT_THAT(found(0, 9), ElementsAre("B", "b", "a\xcc\x88", "later"));
    std::string ids;
    for (const CalendarInfo &calendar : source.calendars())
        ids += calendar.id;
    EXPECT_EQ(ids, "3421");
}

TEST_F(EventKitSourceTest, findsWhatOverlaps)
{
    // From 100 to 200.
    first->tell(
        {.meetings = {meeting("around it", 0, 300), meeting("before", 0, 50),
                      meeting("ends at the start", 0, 100), meeting("runs into it", 0, 101),
                      meeting("no length before", 99, 99), meeting("no length at its start", 100, 100),
                      meeting("no length inside", 150, 150), meeting("runs out of it", 199, 250),
                      meeting("starts at its end", 200, 250), meeting("no length at its end", 200, 200)},
         .status = Status::fullAccess});
    EXPECT_THAT(found(100, 200), ElementsAre("around it", "runs into it", "no length at its start",
                                             "no length inside", "runs out of it"));
}

TEST_F(EventKitSourceTest, hasTheDaysLoadedThatAreAskedFor)
{
    // Two days in turn, as time passes: each is loaded a day ahead of need, and once.
    const Timestamp start = at("2026-03-10T00:00:00Z");
    constexpr Seconds day{86400};
    for (int hour = 0; hour < 10 * 24; ++hour) {
        const Timestamp from = start + Seconds(3600 * hour);
        const EventWindow loaded = first->windows.back();
        EXPECT_TRUE(loaded.from <= from && from + 2 * day <= loaded.to) << hour;
        source.meetings(from, from + day, {});
        source.meetings(from + day, from + 2 * day, {});
    }
    EXPECT_LT(first->windows.size(), 10U);
    EXPECT_EQ(second->windows.size(), first->windows.size());
    // Far away, and back: both stay loaded.
    source.meetings(at("2026-07-20T00:00:00Z"), at("2026-07-21T00:00:00Z"), {});
    const std::size_t count = first->windows.size();
    for (const char *from : {"2026-03-19T00:00:00Z", "2026-07-20T00:00:00Z", "2026-03-19T00:00:00Z"})
        source.meetings(at(from), at(from) + day, {});
    EXPECT_EQ(first->windows.size(), count);
    source.setTimeZone(QTimeZone::utc());
    EXPECT_EQ(first->windows.size(), count) << "the zone that it is";
    source.setTimeZone(QTimeZone("America/New_York"));
    EXPECT_EQ(first->windows.back().zone, QTimeZone("America/New_York"));
    EXPECT_EQ(first->windows.back().from, first->windows[count - 1].from);
    source.meetings(Timestamp::min(), Timestamp::max(), {});
    EXPECT_LT(first->windows.back().to - first->windows.back().from, 410 * day);
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
