#pragma once

#include "Meetings/JoinLink.h"

#include <optional>
#include <string_view>
#include <vector>

/// Finds the one link by which a meeting is joined in the texts of its event. Pure functions; linear in the
/// length of the texts, whatever these hold.
namespace mivora {

/// The join link of an event's URL, location and notes. The first text that has any https link decides;
/// within it a link of a known service wins over a plain one.
std::optional<JoinLink> detect(std::optional<std::string_view> url, std::optional<std::string_view> location,
                               std::optional<std::string_view> notes);

/// The https links in `text`, in order of position, without trailing punctuation.
std::vector<Url> links(std::string_view text);

/// The target of a link that a calendar service wrapped in its own redirector; every other link unchanged.
Url unwrapRedirect(const Url &link);

/// The service rules for one link; nothing when it is no https link with a host, or is longer than
/// longestText: no program could be given it to open.
std::optional<JoinLink> classify(const Url &link);

/// The link that opens the Zoom app for a Zoom web link; nothing when that names no meeting number.
std::optional<Url> zoomNativeURL(const Url &link);

} // namespace mivora
