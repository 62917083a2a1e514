#include "Calendar/ical/FieldText.h"

#include "Calendar/ical/ContentLine.h"
#include "Calendar/ical/EventFields.h"

#include <algorithm>
#include <memory>

namespace mivora {

namespace {

constexpr std::string_view fields[] = {
    "SUMMARY",
    "LOCATION",
    "DESCRIPTION",
    "X-ALT-DESC",
    "URL",
    "ATTENDEE",
    "CONFERENCE",
    "X-GOOGLE-CONFERENCE",
    "X-MICROSOFT-SKYPETEAMSMEETINGURL",
    "X-MICROSOFT-ONLINEMEETINGCONFLINK",
};

/// A component of the needed lines alone.
std::string neededText(std::string_view text)
{
    std::string needed = "BEGIN:VEVENT\r\n";
    int nested = 0;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (hasName(line, "BEGIN"))
            ++nested;
        else if (hasName(line, "END"))
            nested -= nested > 0;
        else if (nested == 0 && std::any_of(std::begin(fields), std::end(fields),
                                            [&](std::string_view name) { return hasName(line, name); }))
            needed += line;
    }
    needed.erase(std::remove(needed.begin(), needed.end(), '\0'), needed.end());
    return needed + "END:VEVENT\r\n";
}

} // namespace

void readEventFields(std::string_view text, StoreEvent &event)
{
    const auto free = [](icalcomponent *component) { icalcomponent_free(component); };
    const std::unique_ptr<icalcomponent, decltype(free)> component(
        icalparser_parse_string(neededText(text).c_str()), free);
    if (component)
        readEventFields(component.get(), event);
}

} // namespace mivora
