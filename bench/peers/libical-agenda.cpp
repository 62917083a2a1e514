// A program that keeps its calendars in libical, written as somebody who knows the library would: zones are
// the system's, taken by name; the times of an event are found out once; and a rule is only expanded for an
// event that may reach into the days.

#include "CalendarPeer.h"

#include <libical/ical.h>
#include <limits>
#include <memory>
#include <unordered_map>
#include <vector>

namespace {

constexpr std::time_t endless = std::numeric_limits<std::time_t>::max();

template<auto free> struct FreedBy
{
    template<typename T> void operator()(T *object) const { free(object); }
};

using Component = std::unique_ptr<icalcomponent, FreedBy<icalcomponent_free>>;
using Iterator = std::unique_ptr<icalrecur_iterator, FreedBy<icalrecur_iterator_free>>;

struct Event
{
    icalcomponent *component = nullptr;
    icalproperty *rule = nullptr;
    icaltimetype start = {};
    std::time_t length = 0;
    std::time_t begin = 0;
    std::time_t end = 0;
};

std::time_t secondsOf(const icaltimetype &time)
{
    return icaltime_as_timet_with_zone(time, time.zone);
}

class Libical final : public peers::CalendarLibrary
{
    void read(const std::string &name, char *text) override
    {
        Component &calendar = m_calendars[name];
        if (calendar)
            std::erase_if(m_events, [&](const Event &event) {
                return icalcomponent_get_parent(event.component) == calendar.get();
            });
        calendar.reset(icalparser_parse_string(peers::withoutKnownZones(text)));
        for (icalcompiter event = icalcomponent_begin_component(calendar.get(), ICAL_VEVENT_COMPONENT);
             icalcompiter_deref(&event); icalcompiter_next(&event))
            m_events.push_back(eventOf(icalcompiter_deref(&event), calendar.get()));
    }

    std::vector<peers::Occurrence> occurrences(peers::Days days) override
    {
        std::vector<peers::Occurrence> found;
        for (Event &event : m_events) {
            if (event.begin >= days.to || event.end <= days.from)
                continue;
            if (event.rule)
                addRepetitions(event, days, found);
            else
                add(event, event.begin, found);
        }
        return found;
    }

    static void add(const Event &event, std::time_t begin, std::vector<peers::Occurrence> &found)
    {
        found.push_back({icalcomponent_get_summary(event.component), begin, begin + event.length});
    }

    Event eventOf(icalcomponent *component, icalcomponent *calendar)
    {
        Event event{component, icalcomponent_get_first_property(component, ICAL_RRULE_PROPERTY)};
        icalproperty *const start = icalcomponent_get_first_property(component, ICAL_DTSTART_PROPERTY);
        icalproperty *const end = icalcomponent_get_first_property(component, ICAL_DTEND_PROPERTY);
        event.start = timeOf(start, icalproperty_get_dtstart(start), calendar);
        event.begin = secondsOf(event.start);
        if (end)
            event.length = secondsOf(timeOf(end, icalproperty_get_dtend(end), calendar)) - event.begin;
        else
            event.length = icaldurationtype_as_int(icalcomponent_get_duration(component));
        event.end = event.rule ? endless : event.begin + event.length;
        return event;
    }

    icaltimetype timeOf(icalproperty *property, icaltimetype time, icalcomponent *calendar)
    {
        if (const char *zone = icalproperty_get_parameter_as_string(property, "TZID"))
            icaltime_set_timezone(&time, zoneOf(zone, calendar));
        return time;
    }

    /// The library searches all its zones for a name, so they are remembered.
    const icaltimezone *zoneOf(const char *name, icalcomponent *calendar)
    {
        const auto [known, isNew] = m_zones.try_emplace(name);
        if (isNew)
            known->second = icaltimezone_get_builtin_timezone(name);
        return known->second ? known->second : icalcomponent_get_timezone(calendar, name);
    }

    static void addRepetitions(Event &event, peers::Days days, std::vector<peers::Occurrence> &found)
    {
        const icalrecurrencetype rule = icalproperty_get_rrule(event.rule);
        const Iterator iterator(icalrecur_iterator_new(rule, event.start));
        if (rule.count == 0)
            icalrecur_iterator_set_start(
                iterator.get(), icaltime_from_timet_with_zone(days.from - event.length, 0, event.start.zone));
        std::time_t last = event.begin;
        for (;;) {
            icaltimetype day = icalrecur_iterator_next(iterator.get());
            if (icaltime_is_null_time(day)) {
                // Asked once more, the event is known to be over.
                event.end = last + event.length;
                return;
            }
            last = secondsOf(day);
            if (last >= days.to)
                return;
            if (last + event.length > days.from &&
                !icalproperty_recurrence_is_excluded(event.component, &event.start, &day))
                add(event, last, found);
        }
    }

    std::unordered_map<std::string, Component> m_calendars;
    std::vector<Event> m_events;
    std::unordered_map<std::string, const icaltimezone *> m_zones;
};

} // namespace

int main(int argc, char **argv)
{
    Libical library;
    return peers::runPeer(argc, argv, library);
}
