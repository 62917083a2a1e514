#include "MeetingTexts/TitleText.h"

#include "MeetingTexts/MeetingTexts.h"
#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(ShortenedTitle, countsWhatAReaderTakesForACharacter)
{
    const std::tuple<const char *, int, const char *> rows[] = {
        {"Standup", 7, "Standup"},
        {"Weekly sync", 8, "Weekly…"},
        {"Weekly\u00a0sync", 8, "Weekly\u00a0…"}, // no blank
        {"Weekly", 1, "…"},
        {"e\u0301e\u0301e\u0301", 2, "e\u0301…"},
        {"👨‍👩‍👧‍👦👨‍👩‍👧‍👦 x", 3,
         "👨‍👩‍👧‍👦👨‍👩‍👧‍👦…"},
    };
    for (const auto &[title, width, text] : rows)
        EXPECT_EQ(shortenedTitle(QString::fromUtf8(title), width).toStdString(), text) << title << width;
}

TEST(TitleText, isOneLine)
{
    const std::pair<std::string_view, const char *> rows[] = {
        {"a\nb\rc\r\nd", "a b c d"},
        {"a\tb\177c\u0085d\u2028e\u2029f", "a b c d e f"},
        {"a\u202ab\u202ec\u2066d\u2069e", "a b c d e"}, // the writing direction
        {std::string_view("a\0b", 3), "a b"},
        {"a\xff\xc3", "a\ufffd\ufffd"},
        {"👩‍💻\u200b", "👩‍💻\u200b"},
    };
    for (const auto &[title, text] : rows)
        EXPECT_EQ(titleText(title).toStdString(), text);
}

TEST(TitleText, isBoundedHoweverLongTheTitle)
{
    const std::string whole(maxTitleCharacters, 'a');
    EXPECT_EQ(titleText(whole).toStdString(), whole);
    EXPECT_EQ(titleText(whole + 'a').toStdString(), whole + "…");

    const QString cut = titleText("e" + QString(10'000, QChar(0x301)).toStdString());
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
    const std::tuple<const char *, const char *, QLocale, const char *> rows[] = {
        {"2026-03-10T09:05:59.999Z", "UTC", QLocale::c(), "09:05"},
        {"2026-03-10T09:05:00Z", "UTC", QLocale(QLocale::Finnish), "9.05"},
        {"2026-03-29T01:00:00Z", "Europe/Berlin", QLocale::c(), "03:00"},
        {"1969-12-31T23:59:59.500Z", "UTC", QLocale::c(), "23:59"},
    };
    for (const auto &[time, zone, locale, text] : rows)
        EXPECT_EQ(shortTime(at(time), QTimeZone(zone), locale).toStdString(), text);
}

TEST(Countdown, isToldInTwoLengths)
{
    // The text, the short one, and how long they stay.
    const std::tuple<double, const char *, const char *, double> rows[] = {
        {1e18, "16666666666666h 40m", "16666666666667h", 40},
        {-30.5, "now", "now", 29.501},
        {59.9, "now", "now", 59.901},
        {60, "1m", "1m", 0.001},
        {60.5, "2m", "2m", 0.501},
        {3600, "1h", "1h", 0.001},
        {5340, "1h 29m", "1h", 0.001},
        {5341, "1h 30m", "2h", 1.001},
    };
    for (const auto &[left, text, shortText, stays] : rows) {
        EXPECT_EQ(countdownText(Seconds(left)).toStdString(), text);
        EXPECT_EQ(shortCountdownText(Seconds(left)).toStdString(), shortText);
        EXPECT_NEAR(untilNextMinute(Seconds(left)).count(), stays, 1e-6) << left;
    }
}

} // namespace mivora
