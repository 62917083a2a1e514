#include "MeetingTexts/TitleText.h"

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
        {"one too long", "Standups", 7, "Standu…"},
        {"trimmed at the cut", "Weekly sync", 8, "Weekly…"},
        {"trimmed in front", " \tWeekly sync", 9, "Weekly…"},
        {"only blanks left", "    sync", 4, "…"},
        {"no-break space is no blank", "Weekly\u00a0sync", 8, "Weekly\u00a0…"},
        {"width 2", "Weekly", 2, "W…"},
        {"width 1", "Weekly", 1, "…"},
        {"width 0", "Weekly", 0, "…"},
        {"negative width", "Weekly", -5, "…"},
        {"width 1, one character", "W", 1, "W"},
        {"width 0, empty", "", 0, ""},
        {"combining marks", "e\u0301e\u0301e\u0301", 3, "e\u0301e\u0301e\u0301"},
        {"combining marks, cut", "e\u0301e\u0301e\u0301", 2, "e\u0301…"},
        {"family", "👨‍👩‍👧‍👦👨‍👩‍👧‍👦 x", 3,
         "👨‍👩‍👧‍👦👨‍👩‍👧‍👦…"},
        {"flags", "🇩🇪🇫🇷🇯🇵", 2, "🇩🇪…"},
        {"skin tone", "👍🏽👍🏽", 2, "👍🏽👍🏽"},
        {"Hangul syllables", "\u1112\u1161\u11ab\u1100\u1173\u11af!", 2, "\u1112\u1161\u11ab…"},
        {"Devanagari vowel sign", "नीनीनी", 2, "नी…"},
        {"line break of two", "a\r\nbc", 4, "a\r\nbc"},
        {"beyond the plane", "𝔘𝔫𝔦", 2, "𝔘…"},
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
        {"plain", "Design review", "Design review"},
        {"line breaks", "a\nb\rc\r\nd", "a b c d"},
        {"tab, delete and C1", "a\tb\x7f"s + "c\u0085d", "a b c d"},
        {"separators", "a\u2028b\u2029c", "a b c"},
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
    EXPECT_EQ(titleText(std::string(10'000'000, 'a')).toStdString(), whole + "…");

    std::string marks = "e";
    for (int i = 0; i < 1'000'000; ++i)
        marks += "\u0301";
    const QString cut = titleText(marks);
    EXPECT_LT(cut.size(), 10'000);
    EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
    EXPECT_FALSE(cut.contains(QChar(QChar::ReplacementCharacter))) << "half a character at the cut";
}

} // namespace mivora
