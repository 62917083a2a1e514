#include "MeetingTexts/TitleText.h"

#include "MeetingTexts/MeetingTexts.h"
#include "Meetings/Countdown.h"
#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(ShortenedTitle, countsWhatAReaderTakesForACharacter)
{
    const struct
    {
        const char *name;
        const char *title;
        int width;
        const char *text;
    } rows[] = {
        {"fits", "Standup", 7, "Standup"},
        {"no-break space is no blank", "Weekly\u00a0sync", 8, "Weekly\u00a0…"},
        {"width 1", "Weekly", 1, "…"},
        {"width 0", "Weekly", 0, "…"},
        {"combining marks, cut", "e\u0301e\u0301e\u0301", 2, "e\u0301…"},
        {"family", "👨‍👩‍👧‍👦👨‍👩‍👧‍👦 x", 3,
         "👨‍👩‍👧‍👦👨‍👩‍👧‍👦…"},
    };

    for (const auto &row : rows)
        EXPECT_EQ(shortenedTitle(QString::fromUtf8(row.title), row.width).toStdString(), row.text)
            << row.name;
}

TEST(TitleText, isOneLine)
{
    using std::string_literals::operator""s;

    const struct
    {
        const char *name;
        std::string title;
        const char *text;
    } rows[] = {
        {"line breaks", "a\nb\rc\r\nd", "a b c d"},
        {"tab, delete and C1", "a\tb\x7f"s + "c\u0085d", "a b c d"},
        {"writing direction", "a\u202eb\u202cc\u2066d", "a b c d"},
        {"NUL", "a\0b"s, "a b"},
        {"broken UTF-8", "a\xff\xc3", "a\ufffd\ufffd"},
        {"joiners stay", "👩‍💻\u200b", "👩‍💻\u200b"},
    };

    for (const auto &row : rows)
        EXPECT_EQ(titleText(row.title).toStdString(), row.text) << row.name;
}

TEST(TitleText, isBoundedHoweverLongTheTitle)
{
    const std::string whole(maxTitleCharacters, 'a');
    EXPECT_EQ(titleText(whole).toStdString(), whole);
    EXPECT_EQ(titleText(whole + 'a').toStdString(), whole + "…");

    std::string marks = "e";
    for (int i = 0; i < 10'000; ++i)
        marks += "\u0301";
    const QString cut = titleText(marks);
    EXPECT_LT(cut.size(), 10'000);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_FALSE(cut.contains(QChar(QChar::ReplacementCharacter))) << "half a character at the cut";
}

TEST(TitleText, sortsByScalarValuesOfTheComposedForm)
{
    const std::vector<std::string> sorted{"", "B", "Z", "a", "e\u0301", "\u00e9a", "\uffff", "\U00010000"};
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        for (std::size_t j = 0; j < sorted.size(); ++j)
            EXPECT_EQ(titleSortsBefore(sorted[i], sorted[j]), i < j) << sorted[i] << ' ' << sorted[j];
    }
    EXPECT_FALSE(titleSortsBefore("e\u0301", "\u00e9") || titleSortsBefore("\u00e9", "e\u0301"));
}

TEST(ShortTime, isTheLocalesWithoutDateAndSeconds)
{
    const struct
    {
        const char *name;
        const char *time;
        const char *zone;
        QLocale locale;
        const char *text;
    } rows[] = {
        {"C", "2026-03-10T09:05:59.999Z", "UTC", QLocale::c(), "09:05"},
        {"American", "2026-03-10T09:05:00Z", "UTC", QLocale(QLocale::English, QLocale::UnitedStates),
         "9:05 AM"},
        {"Finnish", "2026-03-10T09:05:00Z", "UTC", QLocale(QLocale::Finnish), "9.05"},
        {"summer", "2026-03-29T01:00:00Z", "Europe/Berlin", QLocale::c(), "03:00"},
        {"before 1970", "1969-12-31T23:59:59.500Z", "UTC", QLocale::c(), "23:59"},
    };

    for (const auto &row : rows)
        EXPECT_EQ(shortTime(at(row.time), QTimeZone(row.zone), row.locale).toStdString(), row.text)
            << row.name;
}

TEST(Countdown, isToldInTwoLengths)
{
    const struct
    {
        double left;
        const char *text;
        const char *shortText;
        double stays;
    } rows[] = {
        {1e18, "16666666666666h 40m", "16666666666667h", 40},
        {-30.5, "now", "now", 29.501},
        {59.9, "now", "now", 59.901},
        {60, "1m", "1m", 0.001},
        {60.5, "2m", "2m", 0.501},
        {3600, "1h", "1h", 0.001},
        {5340, "1h 29m", "1h", 0.001},
        {5341, "1h 30m", "2h", 1.001},
    };

    for (const auto &row : rows) {
        EXPECT_EQ(countdownText(Seconds(row.left)).toStdString(), row.text);
        EXPECT_EQ(shortCountdownText(Seconds(row.left)).toStdString(), row.shortText);
        EXPECT_NEAR(untilNextMinute(Seconds(row.left)).count(), row.stays, 1e-6) << row.left;
    }
}

} // namespace mivora
