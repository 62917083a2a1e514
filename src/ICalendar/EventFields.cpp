#include "ICalendar/ContentLine.h"
#include "ICalendar/EventTimes.h"

#include <algorithm>
#include <array>

namespace mivora::ical {

namespace {

/// Conference links in the order of their trust: of the standard (RFC 7986), and of servers.
constexpr std::array conferenceNames = {"CONFERENCE", "X-GOOGLE-CONFERENCE",
                                        "X-MICROSOFT-SKYPETEAMSMEETINGURL",
                                        "X-MICROSOFT-ONLINEMEETINGCONFLINK"};

/// The names that matter in links; the rest of the markup stays as it is.
std::string withoutEntities(std::string_view html)
{
    static constexpr std::pair<std::string_view, std::string_view> entities[] = {
        {"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&nbsp;", " "},
    };
    std::string text;
    text.reserve(html.size());
    while (!html.empty()) {
        const auto *found = std::find_if(std::begin(entities), std::end(entities),
                                         [&](const auto &entity) { return html.starts_with(entity.first); });
        const bool isEntity = found != std::end(entities);
        text += isEntity ? found->second : html.substr(0, 1);
        html.remove_prefix(isEntity ? found->first.size() : 1);
    }
    return text;
}

/// Whether one talks there: a chat or a phone number is no place to join by link.
bool isForTalking(const ContentLine &conference)
{
    std::string_view features = conference.parameter("FEATURE");
    bool isTalk = features.empty();
    while (!features.empty()) {
        const std::string_view feature = takePart(features, ',');
        isTalk = isTalk || isName(feature, "AUDIO") || isName(feature, "VIDEO") || isName(feature, "SCREEN");
    }
    return isTalk;
}

Participation answerOf(const ContentLine &attendee)
{
    const std::string_view answer = attendee.parameter("PARTSTAT");
    if (isName(answer, "ACCEPTED"))
        return Participation::accepted;
    if (isName(answer, "DECLINED"))
        return Participation::declined;
    return isName(answer, "TENTATIVE") ? Participation::tentative : Participation::unknown;
}

/// Reads the lines of one VEVENT.
class FieldReader
{
public:
    explicit FieldReader(Occurrence &event) : m_event(event) {}

    void readLine(std::string_view text)
    {
        if (hasName(text, "SUMMARY"))
            readText(text, m_event.title);
        else if (hasName(text, "LOCATION"))
            readText(text, m_event.location);
        else if (hasName(text, "DESCRIPTION"))
            readText(text, m_event.notes);
        else if (hasName(text, "X-ALT-DESC"))
            readText(text, m_html);
        else if (hasName(text, "URL"))
            readUri(text, m_event.url);
        else if (hasName(text, "ATTENDEE") || hasName(text, "ORGANIZER"))
            readPerson(text);
        else
            for (std::size_t i = 0; i < conferenceNames.size(); ++i)
                if (hasName(text, conferenceNames[i]))
                    readConference(text, m_conferences[i]);
    }

    void finish()
    {
        if (!m_event.notes && m_html)
            m_event.notes = withoutEntities(*m_html);
        for (std::optional<std::string> &conference : m_conferences)
            if (!m_event.url && conference)
                m_event.url = std::move(conference);
    }

private:
    // Of several the first counts.
    void readText(std::string_view text, std::optional<std::string> &field)
    {
        const ContentLine line = ContentLine::parse(text, m_buffer);
        if (!field && !withoutBlanks(line.value).empty())
            field = unescapedText(line.value);
    }

    void readUri(std::string_view text, std::optional<std::string> &field)
    {
        const std::string_view value = withoutBlanks(ContentLine::parse(text, m_buffer).value);
        if (!field && !value.empty())
            field = value;
    }

    void readConference(std::string_view text, std::optional<std::string> &field)
    {
        const ContentLine line = ContentLine::parse(text, m_buffer);
        if (field || !startsWithName(withoutBlanks(line.value), "https:") || !isForTalking(line))
            return;
        // Extensions are texts unless they say otherwise.
        const bool isUri = hasName(text, "CONFERENCE") || isName(line.parameter("VALUE"), "URI");
        field = isUri ? std::string(withoutBlanks(line.value)) : unescapedText(withoutBlanks(line.value));
    }

    void readPerson(std::string_view text)
    {
        const ContentLine line = ContentLine::parse(text, m_buffer);
        if (withoutBlanks(line.value).empty())
            return;
        const std::string_view kind = line.parameter("CUTYPE");
        const bool isResource = isName(kind, "ROOM") || isName(kind, "RESOURCE");
        const Attendee person{mailAddress(line.value), mailAddress(line.parameter("EMAIL")), answerOf(line),
                              isResource};
        if (hasName(text, "ORGANIZER"))
            m_event.organizer = person;
        else
            m_event.attendees.push_back(person);
    }

    Occurrence &m_event;
    std::optional<std::string> m_html;
    std::array<std::optional<std::string>, conferenceNames.size()> m_conferences;
    std::string m_buffer;
};

} // namespace

void readEventFields(std::string_view component, Occurrence &event)
{
    FieldReader reader(event);
    forEachLine(component, [&](std::string_view line) { reader.readLine(line); });
    reader.finish();
}

} // namespace mivora::ical
