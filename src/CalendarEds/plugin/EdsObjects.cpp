#include "CalendarEds/plugin/EdsObjects.h"

#include "CalendarEds/plugin/Glib.h"

#include <QDateTime>
#include <QTimeZone>

namespace mivora {

namespace {

std::string isoTime(double seconds)
{
    return QDateTime::fromSecsSinceEpoch(qint64(seconds), QTimeZone::utc())
        .toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"))
        .toStdString();
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
    return "(or (has-recurrences?) (occur-in-time-range? (make-time \"" + isoTime(interval.from) +
           "\") (make-time \"" + isoTime(interval.to) + "\")))";
}

} // namespace mivora
