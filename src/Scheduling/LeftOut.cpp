#include "Scheduling/LeftOut.h"

#include "Meetings/Meeting.h"
#include "Preferences/Preferences.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

namespace mivora {

namespace {

std::u32string characters(const QString &text)
{
    return text.normalized(QString::NormalizationForm_C).toCaseFolded().toStdU32String();
}

/// A text by its characters, without case, ways to write an accent, and ways to part words: where a title is
/// shown, a line break in it is a blank.
struct Folded
{
    std::u32string text;
    /// Capitals can be more characters: those of "ß" are "SS".
    std::u32string capitals;
};

Folded folded(const QString &text)
{
    const QString line = text.simplified();
    return {characters(line), characters(line.toUpper())};
}

/// They are the same at every refresh, for every meeting: folding is much more work than comparing.
const std::vector<Folded> &foldedOnce(const QStringList &patterns)
{
    static QStringList known;
    static std::vector<Folded> all;
    if (known != patterns) {
        known = patterns;
        all.clear();
        std::ranges::transform(known, std::back_inserter(all), folded);
    }
    return all;
}

/// Whether `pattern` is all of `text`: `*` stands for any characters, `?` for one. Only the last `*` is ever
/// extended, since any text that fits behind an earlier one does so at its first place: the steps are the
/// product of both lengths at most.
bool matches(const std::u32string &pattern, const std::u32string &text)
{
    std::size_t p = 0, t = 0, behindStar = 0, fromText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == U'*') {
            behindStar = ++p;
            fromText = t;
        } else if (p < pattern.size() && (pattern[p] == U'?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (behindStar > 0) {
            p = behindStar;
            t = ++fromText;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(U'*', p) == std::u32string::npos;
}

bool isIgnored(const QString &title, const QStringList &patterns)
{
    const Folded ours = folded(title);
    return std::ranges::any_of(foldedOnce(patterns), [&](const Folded &pattern) {
        return matches(pattern.text, ours.text) || matches(pattern.capitals, ours.capitals);
    });
}

bool isUnanswered(const Meeting &meeting)
{
    return meeting.isInvitation && (meeting.participation == Participation::unknown ||
                                    meeting.participation == Participation::tentative);
}

} // namespace

QLatin1String leftOutReason(const Meeting &meeting, const Preferences &prefs)
{
    if (!prefs.ignoredTitles().isEmpty() &&
        isIgnored(QString::fromStdString(meeting.title), prefs.ignoredTitles()))
        return QLatin1String("title");
    if (prefs.ignoreUnanswered() && isUnanswered(meeting))
        return QLatin1String("unanswered");
    if (prefs.ignoreWithoutOthers() && !meeting.hasOthers)
        return QLatin1String("withoutOthers");
    return {};
}

} // namespace mivora
