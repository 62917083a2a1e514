#pragma once

#include "Meetings/Service.h"
#include "Meetings/Url.h"

#include <optional>

namespace mivora {

/// The link by which a meeting is joined.
struct JoinLink
{
    Service service = Service::other;
    /// The https link as found, redirects unwrapped.
    Url webURL;
    /// The link that opens the service's own app; only Zoom, Teams and FaceTime have one.
    std::optional<Url> nativeURL{};

    friend bool operator==(const JoinLink &, const JoinLink &) = default;
};

} // namespace mivora
