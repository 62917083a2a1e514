#include "Meetings/Url.h"

#include <boost/url/parse.hpp>
#include <boost/url/pct_string_view.hpp>
#include <boost/url/url_view.hpp>

#include <algorithm>

namespace mivora {

namespace {

/// Boost.URL 1.81 ends an authority at the first character that it can't hold and takes what follows for the
/// path: "host:x", "[::1]x" and "a@b@c" pass. RFC 3986 has only "/" or nothing there (section 3.3).
bool pathFitsAuthority(const boost::urls::url_view &url)
{
    const std::string_view path = url.encoded_path();
    return path.empty() || path.front() == '/';
}

/// Whether `port`, which holds digits alone, is empty or a number of 16 bits. Boost.URL lets it overflow.
bool isPort(std::string_view port)
{
    constexpr std::string_view highest = "65535";
    port.remove_prefix(std::min(port.find_first_not_of('0'), port.size()));
    return port.size() < highest.size() || (port.size() == highest.size() && port <= highest);
}

bool isValidAuthority(const boost::urls::url_view &url)
{
    return !url.encoded_host().empty() && isPort(url.port()) && pathFitsAuthority(url);
}

/// The text that the percent-encoded `part` of a valid URL stands for. A "+" stays as it is.
std::string decoded(std::string_view part)
{
    return boost::urls::pct_string_view(part).decode();
}

/// Removes what `rest` begins with, up to the first `delimiter` and this too, and returns it without this.
std::string_view takeUntil(char delimiter, std::string_view &rest)
{
    const std::string_view taken = rest.substr(0, rest.find(delimiter));
    rest.remove_prefix(std::min(taken.size() + 1, rest.size()));
    return taken;
}

} // namespace

std::optional<Url> Url::parse(std::string_view text)
{
    const auto parsed = boost::urls::parse_uri(text);
    if (!parsed || (parsed->has_authority() && !isValidAuthority(*parsed)))
        return std::nullopt;
    // Boost.URL takes a second "#" from 1.83 on, which RFC 3986 doesn't (section 3.5).
    if (parsed->encoded_fragment().find('#') != std::string_view::npos)
        return std::nullopt;
    const auto rangeOf = [text](std::string_view part) {
        return part.empty() ? Range() : Range{std::size_t(part.data() - text.data()), part.size()};
    };
    Url url(text);
    url.m_scheme = rangeOf(parsed->scheme());
    if (parsed->has_authority())
        url.m_host = rangeOf(parsed->encoded_host());
    url.m_path = rangeOf(parsed->encoded_path());
    url.m_query = rangeOf(parsed->encoded_query());
    return url;
}

std::optional<std::string_view> Url::host() const
{
    return m_host ? std::optional(part(*m_host)) : std::nullopt;
}

std::string Url::path() const
{
    return decoded(part(m_path));
}

std::vector<std::string> Url::pathComponents() const
{
    std::vector<std::string> components;
    std::string_view rest = part(m_path);
    if (rest.starts_with('/'))
        components.emplace_back("/");
    while (!rest.empty()) {
        const std::string_view component = takeUntil('/', rest);
        if (!component.empty())
            components.push_back(decoded(component));
    }
    return components;
}

std::optional<std::string> Url::queryValue(std::string_view name) const
{
    // Not Boost.URL's parse_query, which in 1.81 reads beyond the end of the last value.
    std::string_view items = part(m_query);
    while (!items.empty()) {
        std::string_view item = takeUntil('&', items);
        const bool hasValue = item.find('=') != std::string_view::npos;
        if (decoded(takeUntil('=', item)) == name)
            return hasValue ? std::optional(decoded(item)) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace mivora
