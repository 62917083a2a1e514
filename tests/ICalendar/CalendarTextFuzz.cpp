#include "ICalendar/CalendarText.h"

#include <cstdint>
#include <cstdlib>

namespace {

bool isCutShort(const mivora::ical::CalendarText &text)
{
    for (const mivora::ical::TextProblem &problem : text.problems)
        if (problem.message.find("too often") != std::string::npos)
            return true;
    return text.problems.size() >= 50;
}

} // namespace

/// Both readers agree on any text, and neither crashes or takes long.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace mivora::ical;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const EventWindow window{UtcTime(std::chrono::seconds(1'717'970'400)),
                             UtcTime(std::chrono::seconds(1'718'143'200)), QTimeZone("Europe/Berlin")};
    const CalendarText quick = readCalendarText(text, window);
    const CalendarText full = readCalendarTextInFull(text, window);
    if (!isCutShort(full) && quick.occurrences != full.occurrences)
        std::abort();
    if (quick.earliest != full.earliest || quick.latest != full.latest || quick.name != full.name)
        std::abort();
    for (const Occurrence &event : quick.occurrences)
        if (event.start > event.end || event.start >= window.to ||
            event.end.time_since_epoch().count() > quick.latest)
            std::abort();
    return 0;
}
