#include "Meetings/Service.h"

#include <algorithm>

namespace mivora {

namespace {

struct ServiceNames
{
    Service service;
    std::string_view rawValue;
    std::string_view displayName;
};

constexpr std::array<ServiceNames, allServices.size()> names{{
    {Service::zoom, "zoom", "Zoom"},
    {Service::meet, "meet", "Google Meet"},
    {Service::teams, "teams", "Teams"},
    {Service::webex, "webex", "Webex"},
    {Service::facetime, "facetime", "FaceTime"},
    {Service::other, "other", "Link"},
}};
static_assert(std::ranges::equal(names, allServices, {}, &ServiceNames::service),
              "names are looked up by the service's place");

const ServiceNames &namesOf(Service service)
{
    return names.at(std::size_t(service));
}

} // namespace

std::string_view rawValue(Service service)
{
    return namesOf(service).rawValue;
}

std::string_view displayName(Service service)
{
    return namesOf(service).displayName;
}

std::optional<Service> serviceFromRawValue(std::string_view raw)
{
    const auto found = std::ranges::find(names, raw, &ServiceNames::rawValue);
    return found == names.end() ? std::nullopt : std::optional(found->service);
}

} // namespace mivora
