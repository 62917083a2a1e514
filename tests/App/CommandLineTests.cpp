#include "App/commands/CommandLine.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

Request parsed(std::vector<const char *> arguments)
{
    arguments.insert(arguments.begin(), "mivora");
    return parseCommandLine(int(arguments.size()), arguments.data());
}

} // namespace

TEST(CommandLine, readsTheRequests)
{
    const auto agenda = std::get<AgendaRequest>(
        parsed({"agenda", "--json", "--at", "1970-01-01T00:00:09Z", "--calendars", "a", "--calendars=b"}));
    EXPECT_TRUE(agenda.json);
    EXPECT_FALSE(agenda.follow);
    EXPECT_EQ(agenda.at, timestampFromSeconds(9));
    EXPECT_EQ(agenda.calendars, (std::vector<std::string>{"a", "b"}));

    const auto detect = std::get<DetectRequest>(parsed({"detect", "--notes", "-- https://a.b"}));
    EXPECT_EQ(detect.notes, "-- https://a.b");
    EXPECT_EQ(detect.url, std::nullopt);

    const auto write = std::get<DefaultsRequest>(parsed({"defaults", "write", "leadMinutes", "-5"}));
    EXPECT_EQ(write.action, DefaultsRequest::Action::write);
    EXPECT_EQ(write.key, "leadMinutes");
    EXPECT_EQ(write.value, "-5");

    EXPECT_EQ(std::get<AccessRequest>(parsed({"access"})).action, AccessRequest::Action::status);
    EXPECT_EQ(std::get<AccessRequest>(parsed({"access", "reset"})).action, AccessRequest::Action::reset);
    EXPECT_EQ(std::get<RemoteRequest>(parsed({"settings", "calendars"})).page, "calendars");
    EXPECT_EQ(std::get<StartRequest>(parsed({})).startedBy, StartedBy::user);
    EXPECT_EQ(std::get<StartRequest>(parsed({"--service"})).startedBy, StartedBy::sessionBus);
}

TEST(CommandLine, badArgumentsAreNamedWithWhatWasExpected)
{
    const std::tuple<std::vector<const char *>, const char *, const char *> cases[] = {
        {{"bogus"}, "bogus", "agenda"},
        {{"agenda", "--bogus"}, "--bogus", "--follow"},
        {{"agenda", "--at", "noon"}, "noon", "RFC 3339"},
        {{"agenda", "--calendars"}, "--calendars", "DIR"},
        {{"defaults"}, "defaults", "list, read, write, delete"},
        {{"defaults", "read"}, "key", "required"},
        {{"access", "maybe"}, "maybe", "status, allow, reset"},
        {{"settings", "colours"}, "colours", "general,calendars"},
        {{"a\nb\033c"}, "a b c", "agenda"},
    };
    for (const auto &[arguments, named, expected] : cases) {
        const Request request = parsed(arguments);
        const auto *finished = std::get_if<FinishedRequest>(&request);
        ASSERT_TRUE(finished) << named;
        EXPECT_EQ(finished->exitStatus, exitBadArguments) << named;
        EXPECT_THAT(finished->text, AllOf(StartsWith("mivora: "), HasSubstr(named), HasSubstr(expected)));
        EXPECT_EQ(std::ranges::count(finished->text, '\n'), 1) << finished->text;
    }
}

} // namespace mivora
