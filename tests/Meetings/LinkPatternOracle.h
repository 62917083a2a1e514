#pragma once

#include <string_view>
#include <vector>

namespace mivora::test {

/// The matches of the link pattern in \a text, found by ICU's regular expressions. Bytes that are no valid
/// UTF-8 count as replacement characters.
std::vector<std::string_view> matchesOfLinkPattern(std::string_view text);

} // namespace mivora::test
