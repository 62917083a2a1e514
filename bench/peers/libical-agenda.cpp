// A program that parses every file and expands every rule with libical.

#include "CalendarPeer.h"

#include <libical/ical.h>
#include <map>
#include <memory>

namespace {

struct Free
{
    void operator()(icalcomponent *component) const { icalcomponent_free(component); }
};

void count(icalcomponent *, icaltime_span *, void *counted)
{
    ++*static_cast<long *>(counted);
}

class Libical final : public peers::CalendarLibrary
{
    void read(const std::string &name, const char *text, std::size_t) override
    {
        m_calendars[name].reset(icalparser_parse_string(text));
    }

    long occurrences(peers::Days days) override
    {
        long counted = 0;
        icaltimezone *utc = icaltimezone_get_utc_timezone();
        const icaltimetype from = icaltime_from_timet_with_zone(days.from, 0, utc);
        const icaltimetype to = icaltime_from_timet_with_zone(days.to, 0, utc);
        for (const auto &[name, calendar] : m_calendars)
            for (icalcomponent *event =
                     icalcomponent_get_first_component(calendar.get(), ICAL_VEVENT_COMPONENT);
                 event; event = icalcomponent_get_next_component(calendar.get(), ICAL_VEVENT_COMPONENT))
                icalcomponent_foreach_recurrence(event, from, to, count, &counted);
        return counted;
    }

    std::map<std::string, std::unique_ptr<icalcomponent, Free>> m_calendars;
};

} // namespace

int main(int argc, char **argv)
{
    Libical library;
    return peers::runPeer(argc, argv, library);
}
