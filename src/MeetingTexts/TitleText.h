#pragma once

#include "Meetings/Meeting.h"

#include <QString>
#include <string_view>

/// How an event's title is shown and sorted. Characters are what a reader takes for one: grapheme clusters
/// (Unicode, UAX #29).
namespace mivora {

/// The most characters of a title that are handed to a menu, a panel or a bus; more would only slow these
/// down.
inline constexpr int maxTitleCharacters = 255;

/// `title` as one line: control characters, line separators and the controls of the writing direction become
/// blanks. What is longer than maxTitleCharacters, or holds absurdly long characters, is cut and ends in "…".
QString titleText(std::string_view title);

/// `title` in at most `width` characters: whole where it fits, else cut, trimmed of blanks and tabs, and
/// ended by "…", which counts.
QString shortenedTitle(const QString &title, int width);

/// Whether `left` sorts before `right` by Unicode scalar values after canonical composition (NFC). The
/// order of titles and account names everywhere: plain, case-sensitive, the same in every locale.
bool titleSortsBefore(std::string_view left, std::string_view right);

/// The order of meetings everywhere: by start, then title.
bool startsBefore(const Meeting &left, const Meeting &right);

} // namespace mivora
