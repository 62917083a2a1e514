#include "ICalendar/EventFields.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>

namespace mivora::ical {

namespace {

std::string lowered(std::string_view text)
{
    std::string result(text);
    for (char &c : result)
        if (c >= 'A' && c <= 'Z')
            c = char(c | 0x20);
    return result;
}

bool startsWithName(std::string_view text, std::string_view prefix)
{
    return text.size() >= prefix.size() && isName(text.substr(0, prefix.size()), prefix);
}

template<typename Visit> void forEachProperty(icalcomponent *component, icalproperty_kind kind, Visit visit)
{
    for (icalproperty *property = icalcomponent_get_first_property(component, kind); property;
         property = icalcomponent_get_next_property(component, kind))
        visit(property);
}

/// libical's typed getters give the text without escapes, its string getters don't.
std::optional<std::string> textOf(icalproperty *property, const char *(*get)(const icalproperty *))
{
    const char *text = property ? get(property) : nullptr;
    return text ? std::optional<std::string>(text) : std::nullopt;
}

/// The text of an extension's value, whose type a VALUE parameter may have changed.
std::optional<std::string> textOfExtension(icalproperty *property)
{
    const icalvalue *value = icalproperty_get_value(property);
    const char *text = nullptr;
    switch (value ? icalvalue_isa(value) : ICAL_NO_VALUE) {
    case ICAL_X_VALUE:
        text = icalvalue_get_x(value);
        break;
    case ICAL_URI_VALUE:
        text = icalvalue_get_uri(value);
        break;
    case ICAL_TEXT_VALUE:
        text = icalvalue_get_text(value);
        break;
    default:
        break;
    }
    return text ? std::optional<std::string>(text) : std::nullopt;
}

/// Calls \a visit with the text of each extension of this name.
template<typename Visit> void forEachExtension(icalcomponent *component, std::string_view name, Visit visit)
{
    forEachProperty(component, ICAL_X_PROPERTY, [&](icalproperty *property) {
        const char *own = icalproperty_get_x_name(property);
        if (own && isName(own, name))
            visit(textOfExtension(property));
    });
}

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

std::optional<std::string> notesOf(icalcomponent *component)
{
    if (auto text = textOf(icalcomponent_get_first_property(component, ICAL_DESCRIPTION_PROPERTY),
                           icalproperty_get_description))
        return text;
    std::optional<std::string> notes;
    forEachExtension(component, "X-ALT-DESC", [&](const std::optional<std::string> &html) {
        if (!notes && html)
            notes = withoutEntities(*html);
    });
    return notes;
}

/// Whether one talks there: a chat or a phone number is no place to join by link.
bool isForTalking(icalproperty *conference)
{
    char *feature = icalproperty_get_parameter_as_string_r(conference, "FEATURE");
    if (!feature)
        return true;
    const std::string list = lowered(feature);
    icalmemory_free_buffer(feature);
    return list.find("audio") != list.npos || list.find("video") != list.npos ||
           list.find("screen") != list.npos;
}

std::optional<std::string> conferenceOf(icalcomponent *component)
{
    std::optional<std::string> found;
    const auto take = [&](std::optional<std::string> link) {
        if (!found && link && startsWithName(*link, "https:"))
            found = std::move(link);
    };
    forEachProperty(component, ICAL_CONFERENCE_PROPERTY, [&](icalproperty *property) {
        if (isForTalking(property))
            take(textOf(property, icalproperty_get_conference));
    });
    for (const char *name :
         {"X-GOOGLE-CONFERENCE", "X-MICROSOFT-SKYPETEAMSMEETINGURL", "X-MICROSOFT-ONLINEMEETINGCONFLINK"})
        forEachExtension(component, name, take);
    return found;
}

std::optional<std::string> urlOf(icalcomponent *component)
{
    if (auto url =
            textOf(icalcomponent_get_first_property(component, ICAL_URL_PROPERTY), icalproperty_get_url))
        return url;
    return conferenceOf(component);
}

ParticipantStatus statusOf(icalproperty *attendee)
{
    icalparameter *parameter = icalproperty_get_first_parameter(attendee, ICAL_PARTSTAT_PARAMETER);
    if (!parameter)
        return ParticipantStatus::pending;
    switch (icalparameter_get_partstat(parameter)) {
    case ICAL_PARTSTAT_NEEDSACTION:
        return ParticipantStatus::pending;
    case ICAL_PARTSTAT_ACCEPTED:
        return ParticipantStatus::accepted;
    case ICAL_PARTSTAT_DECLINED:
        return ParticipantStatus::declined;
    case ICAL_PARTSTAT_TENTATIVE:
        return ParticipantStatus::tentative;
    case ICAL_PARTSTAT_DELEGATED:
        return ParticipantStatus::delegated;
    case ICAL_PARTSTAT_COMPLETED:
        return ParticipantStatus::completed;
    case ICAL_PARTSTAT_INPROCESS:
        return ParticipantStatus::inProcess;
    default:
        return ParticipantStatus::unknown;
    }
}

std::string emailOf(icalproperty *attendee)
{
    icalparameter *email = icalproperty_get_first_parameter(attendee, ICAL_EMAIL_PARAMETER);
    const char *address = email ? icalparameter_get_email(email) : nullptr;
    return mailAddress(address ? address : "");
}

std::string addressOf(icalproperty *attendee)
{
    const char *value = icalproperty_get_attendee(attendee);
    return mailAddress(value ? value : "");
}

} // namespace

void readEventFields(icalcomponent *component, Occurrence &event)
{
    event.title =
        textOf(icalcomponent_get_first_property(component, ICAL_SUMMARY_PROPERTY), icalproperty_get_summary);
    event.location = textOf(icalcomponent_get_first_property(component, ICAL_LOCATION_PROPERTY),
                            icalproperty_get_location);
    event.url = urlOf(component);
    event.notes = notesOf(component);
    event.attendees.clear();
    forEachProperty(component, ICAL_ATTENDEE_PROPERTY, [&](icalproperty *attendee) {
        event.attendees.push_back({addressOf(attendee), emailOf(attendee), statusOf(attendee)});
    });
}

} // namespace mivora::ical
