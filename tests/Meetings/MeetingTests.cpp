#include "Meetings/Meeting.h"

#include <gmock/gmock.h>

#include <limits>

namespace mivora {

namespace {

Meeting meetingAt(double seconds, std::optional<std::string> identifier = "ABC")
{
    return Meeting::fromSnapshot(
        {.eventIdentifier = std::move(identifier), .start = timestampFromSeconds(seconds)});
}

TEST(MeetingTest, namesOneOccurrence)
{
    EXPECT_EQ(meetingAt(1'700'000'000.9).id, "ABC@1700000000");
    EXPECT_EQ(meetingAt(-1.9).id, "ABC@-1");
    EXPECT_EQ(meetingAt(0, std::nullopt).id, "@0");
    EXPECT_EQ(meetingAt(-0x1p63).id, "ABC@-9223372036854775808");
}

TEST(MeetingDeathTest, refusesAStartThatIsNoDate)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    using Limits = std::numeric_limits<double>;
    for (const double start :
         {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), 0x1p63, -0x1.1p63})
        EXPECT_DEATH(meetingAt(start), "no date") << start;
}

TEST(MeetingTest, trimsItsTitle)
{
    const std::pair<std::optional<std::string>, const char *> rows[] = {
        {std::nullopt, "Untitled"},
        {" \t\r\n\u00a0\u2028\u3000\u0085", "Untitled"},
        {"\u2003Design  review\v\f", "Design  review"},
        {"\u200bStand-up\u200b", "\u200bStand-up\u200b"},
        {"\xa0Stand-up\xe2\x80", "\xa0Stand-up\xe2\x80"},
    };
    for (const auto &[stored, shown] : rows)
        EXPECT_EQ(Meeting::fromSnapshot({.title = stored}).title, shown);
}

TEST(MeetingTest, carriesABoundedPartOfAnEndlessEvent)
{
    const std::string endless(1 << 20, 'a');
    EventSnapshot snapshot{.eventIdentifier = endless, .title = endless, .location = endless};
    snapshot.url = endless;
    snapshot.url->insert(0, "https://zoom.us/j/1?pwd=");
    snapshot.notes = endless;
    snapshot.notes->append(" https://zoom.us/j/2");
    const Meeting meeting = Meeting::fromSnapshot(snapshot);
    EXPECT_LT(meeting.id.size(), 1100u);
    EXPECT_LT(meeting.title.size(), 8200u);
    EXPECT_TRUE(meeting.title.ends_with("…"));
    EXPECT_EQ(meeting.joinLink->webURL.text(), "https://zoom.us/j/2") << "the longer one can't be opened";

    EventSnapshot other = snapshot;
    other.eventIdentifier->back() = '2';
    EXPECT_NE(Meeting::fromSnapshot(other).id, meeting.id);
}

TEST(ColorTest, readsHexadecimalFormsAndNothingElse)
{
    for (const char *text : {"#1af", "#11AAff", "#11aaff00", " #11aaff\n", "\u00a0#1AF"})
        EXPECT_EQ(Color::fromHex(text), (Color{0x11, 0xaa, 0xff})) << text;
    for (const char *text : {"", "#", "11aaff", "#11aaf", "#11aafff", "#11aaff0011", "#-1aaff", "#+1a",
                             "#0x1", "#11 aff", "red", "#ggg", "##1af"})
        EXPECT_EQ(Color::fromHex(text), std::nullopt) << text;
    EXPECT_EQ(Color::fromHex("#01020f")->hex(), "#01020f");
}

TEST(ServiceTest, isStoredUnderItsRawValueOnly)
{
    for (const Service service : allServices)
        EXPECT_EQ(serviceFromRawValue(rawValue(service)), service);
    for (const char *raw : {"Zoom", "", "zoom ", "skype", "Link"})
        EXPECT_EQ(serviceFromRawValue(raw), std::nullopt) << raw;
}

} // namespace

} // namespace mivora
