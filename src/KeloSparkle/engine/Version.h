#pragma once

#include <QString>
#include <compare>
#include <optional>
#include <vector>

namespace kelo {

/// A version as programs write it: "1.2", "v1.2.3", "2.0-beta.3", "1.0rc1", "9.2p1", "2024-06-01". Numbers
/// count as numbers, trailing zeros don't count, and a word such as "beta" makes a version older than the one
/// without it. What stands behind "+" or in parentheses names a build and has no say (semver.org, 10).
class Version final
{
public:
    /// Nothing when \a text has no digits, or is longer than any version.
    static std::optional<Version> parse(const QString &text);

    friend std::weak_ordering operator<=>(const Version &a, const Version &b);

    friend bool operator==(const Version &a, const Version &b) { return (a <=> b) == 0; }

private:
    struct Part
    {
        /// Orders words among each other and around numbers.
        int rank = 0;
        /// Digits without leading zeros, or the word.
        QString text;
    };

    static Part number(const QString &digits);
    static Part word(const QString &letters);
    static std::weak_ordering compare(const Part &a, const Part &b);

    std::vector<Part> m_parts;
};

} // namespace kelo
