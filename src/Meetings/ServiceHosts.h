#pragma once

#include "Meetings/Service.h"

#include <array>
#include <string_view>

/// The public hosts of the services' meeting links, in one place. All are in lower case.
namespace mivora::hosts {

inline constexpr std::string_view zoom = "zoom.us";
inline constexpr std::string_view meet = "meet.google.com";
inline constexpr std::string_view teams = "teams.microsoft.com";
inline constexpr std::string_view teamsConsumer = "teams.live.com";
inline constexpr std::string_view webex = "webex.com";
inline constexpr std::string_view facetime = "facetime.apple.com";

/// Links in Google Calendar's texts lead through "/url" on hosts that end in this.
inline constexpr std::string_view googleRedirect = "google.com";

} // namespace mivora::hosts

namespace mivora {

enum class Subdomains { refused, included };

/// Links on `host` belong to `service` when `acceptsPath` agrees with their decoded path.
struct HostRule
{
    Service service;
    std::string_view host;
    Subdomains subdomains = Subdomains::refused;
    bool (*acceptsPath)(std::string_view path) = [](std::string_view) { return true; };
};

/// The first rule that fits decides; a link that fits none is a plain one.
inline constexpr std::array hostRules{
    HostRule{Service::zoom, hosts::zoom, Subdomains::included},
    HostRule{Service::meet, hosts::meet, Subdomains::refused,
             [](std::string_view path) { return path.size() > 1; }},
    HostRule{Service::teams, hosts::teams, Subdomains::refused,
             [](std::string_view path) {
                 return path.starts_with("/l/meetup-join/") || path.starts_with("/meet/");
             }},
    HostRule{Service::teams, hosts::teamsConsumer, Subdomains::refused,
             [](std::string_view path) { return path.starts_with("/meet/"); }},
    HostRule{Service::webex, hosts::webex, Subdomains::included},
    HostRule{Service::facetime, hosts::facetime},
};

} // namespace mivora
