#include "CalendarEds/plugin/EdsObjects.h"

#include "CalendarEds/plugin/GlibPointers.h"

#include <algorithm>
#include <ctime>

namespace mivora {

namespace {

/// "20260310T000000Z"; whole years 1 to 9999.
std::string isoTime(double seconds)
{
    const auto time = std::time_t(std::clamp(seconds, -62.1e9, 253.4e9));
    std::tm parts{};
    gmtime_r(&time, &parts);
    char text[64];
    std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
    // strftime writes no zeros before early years.
    const std::string written(text);
    return written.size() < 16 ? std::string(16 - written.size(), '0') + written : written;
}

} // namespace

std::vector<CalendarObject> readObjects(const GSList *components)
{
    std::vector<CalendarObject> objects;
    for (; components; components = components->next) {
        auto *component = static_cast<ICalComponent *>(components->data);
        const gchar *uid = i_cal_component_get_uid(component);
        if (!uid || i_cal_component_isa(component) != I_CAL_VEVENT_COMPONENT)
            continue;
        std::string recurrenceID = takeText(e_cal_util_component_get_recurid_as_string(component));
        objects.push_back(
            {{uid, std::move(recurrenceID)}, takeText(i_cal_component_as_ical_string(component))});
    }
    return objects;
}

std::vector<ObjectName> readNames(const GSList *ids)
{
    std::vector<ObjectName> names;
    for (; ids; ids = ids->next) {
        const auto *id = static_cast<const ECalComponentId *>(ids->data);
        names.push_back(
            {textOrEmpty(e_cal_component_id_get_uid(id)), textOrEmpty(e_cal_component_id_get_rid(id))});
    }
    return names;
}

std::set<std::string> timeZonesIn(const GSList *components)
{
    std::set<std::string> ids;
    for (; components; components = components->next)
        i_cal_component_foreach_tzid(
            static_cast<ICalComponent *>(components->data),
            [](ICalParameter *parameter, gpointer data) {
                if (const gchar *id = i_cal_parameter_get_tzid(parameter))
                    static_cast<std::set<std::string> *>(data)->insert(id);
            },
            &ids);
    return ids;
}

std::string queryFor(const DesktopInterval &interval)
{
    // In this order: what recurs is then not expanded by the server, which some rules keep busy for minutes.
    std::string query = "(or (has-recurrences?) (occur-in-time-range? (make-time \"";
    query.append(isoTime(interval.from)).append("\") (make-time \"").append(isoTime(interval.to));
    return query.append("\")))");
}

} // namespace mivora
