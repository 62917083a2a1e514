#include "ICalendar/CalendarHeader.h"

#include "ICalendar/CivilTime.h"
#include "ICalendar/ContentLine.h"

namespace mivora::ical {

namespace {

/// What the header says, the better known of two properties first.
struct Header
{
    std::string name, appleName, color, appleColor, owner;
};

Header readProperties(std::string_view text)
{
    Header header;
    const std::pair<std::string_view, std::string *> properties[] = {
        {"X-WR-CALNAME", &header.appleName},
        {"NAME", &header.name},
        {"X-APPLE-CALENDAR-COLOR", &header.appleColor},
        {"COLOR", &header.color},
        {"X-WR-OWNER", &header.owner},
    };
    std::string buffer;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        for (const auto &[name, target] : properties)
            if (target->empty() && hasName(line, name))
                *target = unescapedText(withoutBlanks(ContentLine::parse(unfolded(line, buffer)).value));
    }
    return header;
}

} // namespace

void readHeader(std::string_view text, CalendarText &calendar)
{
    const Header header = readProperties(text);
    const std::string &name = header.appleName.empty() ? header.name : header.appleName;
    if (!name.empty())
        calendar.name = name;
    const std::string &color = header.appleColor.starts_with('#') ? header.appleColor : header.color;
    if (!color.empty())
        calendar.color = color;
    if (!header.owner.empty())
        calendar.owner = mailAddress(header.owner);
}

} // namespace mivora::ical
