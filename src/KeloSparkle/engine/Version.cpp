#include "KeloSparkle/engine/Version.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <compare>

// A version is a row of parts, continued by zeros without end. The ranks put every part in one line:
// words of pre-releases, zero, words of later patches, revisions ("-1"), the other numbers. Comparing part by
// part then gives a total order, in which 1.0-rc.1 < 1.0 = 1.0.0 < 1.0p1 < 1.0-1 < 1.0.1.

namespace kelo {

namespace {

constexpr int zero = 0;
constexpr int patch = 1;
constexpr int revision = 2;
constexpr int positive = 3;

struct KnownWord
{
    QLatin1String word;
    int rank = 0;
};

// Other words come before these, in alphabetical order.
constexpr std::array knownWords{
    KnownWord{QLatin1String("a"), -5},       KnownWord{QLatin1String("alpha"), -5},
    KnownWord{QLatin1String("b"), -4},       KnownWord{QLatin1String("beta"), -4},
    KnownWord{QLatin1String("pre"), -3},     KnownWord{QLatin1String("preview"), -3},
    KnownWord{QLatin1String("c"), -2},       KnownWord{QLatin1String("rc"), -2},
    KnownWord{QLatin1String("p"), patch},    KnownWord{QLatin1String("patch"), patch},
    KnownWord{QLatin1String("post"), patch}, KnownWord{QLatin1String("sp"), patch},
};
constexpr int unknownWord = -6;

QString withoutBuild(const QString &text)
{
    static const QRegularExpression build(QStringLiteral("[+(].*$"));
    return QString(text).remove(build);
}

} // namespace

Version::Part Version::number(const QString &digits)
{
    static const QRegularExpression leadingZeros(QStringLiteral("^0+"));
    const bool isRevision = digits.startsWith(QLatin1Char('-'));
    const QString text = digits.mid(isRevision ? 1 : 0).remove(leadingZeros);
    return {text.isEmpty() ? zero : isRevision ? revision : positive, text};
}

Version::Part Version::word(const QString &letters)
{
    const auto *known = std::find_if(knownWords.begin(), knownWords.end(),
                                     [&](const KnownWord &candidate) { return candidate.word == letters; });
    if (known == knownWords.end())
        return {unknownWord, letters};
    return {known->rank, {}};
}

std::optional<Version> Version::parse(const QString &text)
{
    constexpr qsizetype longest = 100;
    static const QRegularExpression part(QStringLiteral("-?[0-9]+|[a-z]+"));
    static const QRegularExpression versionPrefix(QStringLiteral("^\\s*(v|version)\\.?\\s*(?=[0-9])"));
    if (text.size() > longest)
        return std::nullopt;
    Version version;
    bool hasNumber = false;
    const QString plain = withoutBuild(text.toLower()).remove(versionPrefix);
    for (auto matches = part.globalMatch(plain); matches.hasNext();) {
        const QString found = matches.next().captured();
        const bool isNumber = found.front() <= QLatin1Char('9');
        version.m_parts.push_back(isNumber ? number(found) : word(found));
        hasNumber = hasNumber || isNumber;
    }
    return hasNumber ? std::optional(version) : std::nullopt;
}

std::weak_ordering Version::compare(const Part &a, const Part &b)
{
    if (a.rank != b.rank)
        return a.rank <=> b.rank;
    // Of two numbers without leading zeros the longer one is larger: there is no largest number.
    if (a.rank > patch && a.text.size() != b.text.size())
        return a.text.size() <=> b.text.size();
    return a.text.compare(b.text) <=> 0;
}

std::weak_ordering operator<=>(const Version &a, const Version &b)
{
    for (std::size_t i = 0; i < std::max(a.m_parts.size(), b.m_parts.size()); ++i) {
        const auto order = Version::compare(i < a.m_parts.size() ? a.m_parts[i] : Version::Part{},
                                            i < b.m_parts.size() ? b.m_parts[i] : Version::Part{});
        if (std::is_neq(order))
            return order;
    }
    return std::weak_ordering::equivalent;
}

} // namespace kelo
