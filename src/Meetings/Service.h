#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace mivora {

/// A meeting service whose links are known; `other` is any plain https link.
enum class Service { zoom, meet, teams, webex, facetime, other };

/// Every service, in the order in which they are declared.
inline constexpr std::array allServices{Service::zoom,  Service::meet,     Service::teams,
                                        Service::webex, Service::facetime, Service::other};

/// The stored name, such as "zoom".
std::string_view rawValue(Service service);

/// The name shown to the user, such as "Google Meet".
std::string_view displayName(Service service);

/// The service with the stored name `raw` (case-sensitive), or nothing.
std::optional<Service> serviceFromRawValue(std::string_view raw);

} // namespace mivora
