#include "ICalendar/FieldText.h"

#include "ICalendar/ContentLine.h"
#include "ICalendar/EventFields.h"

#include <algorithm>
#include <memory>

namespace mivora::ical {

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

/// Hands a text to libical. Its own source of lines looks for the end of a line anew for every few bytes,
/// which takes quadratic time on long ones.
class LineSource
{
public:
    explicit LineSource(std::string_view text) : m_rest(text) {}

    /// Fills \a piece with the next part of a line; null at the end of the text.
    static char *next(char *piece, std::size_t size, void *source)
    {
        return static_cast<LineSource *>(source)->fill(piece, size);
    }

private:
    char *fill(char *piece, std::size_t size)
    {
        if (m_rest.empty())
            return nullptr;
        if (m_leftOfLine == 0)
            m_leftOfLine = std::min(m_rest.find('\n'), m_rest.size() - 1) + 1;
        const std::size_t length = m_rest.copy(piece, std::min(size - 1, m_leftOfLine));
        piece[length] = '\0';
        m_rest.remove_prefix(length);
        m_leftOfLine -= length;
        return piece;
    }

    std::string_view m_rest;
    std::size_t m_leftOfLine = 0;
};

icalcomponent *parsed(std::string_view text)
{
    LineSource source(text);
    const std::unique_ptr<icalparser, decltype(&icalparser_free)> parser(icalparser_new(), icalparser_free);
    icalparser_set_gen_data(parser.get(), &source);
    return icalparser_parse(parser.get(), &LineSource::next);
}

} // namespace

void readEventFields(std::string_view text, Occurrence &event)
{
    const auto free = [](icalcomponent *component) { icalcomponent_free(component); };
    const std::unique_ptr<icalcomponent, decltype(free)> component(parsed(neededText(text)), free);
    if (component)
        readEventFields(component.get(), event);
}

} // namespace mivora::ical
