#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mivora {

/// An absolute URL after RFC 3986, its text kept byte for byte: nothing is normalised.
class Url
{
public:
    /// Parses `text` strictly. Nothing when it is not an RFC 3986 URI, when its port is no number up to
    /// 65,535, or when it has an authority with an empty host.
    static std::optional<Url> parse(std::string_view text);

    /// The whole text, as it was given.
    const std::string &text() const { return m_text; }

    /// The scheme as written, without the colon.
    std::string_view scheme() const { return part(m_scheme); }

    /// The host as written, or nothing when there is no authority.
    std::optional<std::string_view> host() const;

    /// The path, percent-decoded.
    std::string path() const;

    /// The path's components, percent-decoded, without empty ones; "/" comes first for an absolute path.
    std::vector<std::string> pathComponents() const;

    /// The percent-decoded value of the first query item named `name`. Nothing when there is no such item or
    /// it has no value. A "+" stays a plus sign.
    std::optional<std::string> queryValue(std::string_view name) const;

    friend bool operator==(const Url &, const Url &) = default;

private:
    /// Where a part lies in the text.
    struct Range
    {
        std::size_t begin = 0;
        std::size_t length = 0;

        friend bool operator==(const Range &, const Range &) = default;
    };

    explicit Url(std::string_view text) : m_text(text) {}

    std::string_view part(Range range) const
    {
        return std::string_view(m_text).substr(range.begin, range.length);
    }

    std::string m_text;
    Range m_scheme;
    std::optional<Range> m_host;
    Range m_path;
    Range m_query;
};

} // namespace mivora
