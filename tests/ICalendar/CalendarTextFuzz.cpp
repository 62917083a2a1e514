#include "ICalendar/ReadText.h"

#include <cstdint>
#include <cstdlib>

/// A day has the same occurrences by itself as among more days, whatever the text, and no text crashes or
/// takes long.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace mivora::ical;
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    static const EventWindow window = windowOf("2024-06-10T00:00:00", "2024-06-12T00:00:00");
    const CalendarText calendar = readCalendarText(text, window);
    if (occurrencesAmongMore(text, window).value_or(calendar.occurrences) != calendar.occurrences)
        std::abort();
    return 0;
}
