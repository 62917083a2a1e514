#include "ICalendar/EventTimes.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace mivora::ical {

namespace {

/// Reads the properties of one VEVENT.
class TimesReader
{
public:
    TimesReader(ZoneTable &zones, ProblemList &problems) : m_zones(zones), m_problems(problems) {}

    EventTimes read(std::string_view text)
    {
        m_times.text = text;
        int nested = 0;
        while (!text.empty()) {
            const std::string_view line = takeLine(text);
            if (hasName(line, "BEGIN"))
                ++nested;
            else if (hasName(line, "END"))
                nested -= nested > 0;
            else if (nested == 0)
                readLine(line);
        }
        return std::move(m_times);
    }

private:
    using Reader = void (TimesReader::*)(const ContentLine &);

    struct Property
    {
        std::string_view name;
        Reader read;
    };

    void readLine(std::string_view line)
    {
        static constexpr Property properties[] = {
            {"DTSTART", &TimesReader::readStart},     {"DTEND", &TimesReader::readEnd},
            {"DURATION", &TimesReader::readDuration}, {"RRULE", &TimesReader::readRule},
            {"RDATE", &TimesReader::readExtraTimes},  {"EXDATE", &TimesReader::readExcluded},
            {"STATUS", &TimesReader::readStatus},     {"RECURRENCE-ID", &TimesReader::readRecurrenceID},
            {"SEQUENCE", &TimesReader::readSequence}, {"UID", &TimesReader::readUid},
            {"DTSTAMP", &TimesReader::readStamp},
        };
        for (const Property &property : properties) {
            if (!hasName(line, property.name))
                continue;
            m_at = line.data();
            (this->*property.read)(ContentLine::parse(unfolded(line, m_buffer)));
            return;
        }
    }

    void complain(std::string_view what, std::string_view value)
    {
        m_problems.add(m_at, std::string(what) + ": " + std::string(value.substr(0, 60)));
    }

    const Zone *zoneOf(const ContentLine &line, const TimeValue &value)
    {
        if (value.isUtc)
            return &m_zones.utc();
        const std::string_view id = line.parameter("TZID");
        if (id.empty() || value.isDate)
            return nullptr;
        const Zone *zone = m_zones.find(id);
        if (!zone)
            complain("Unknown time zone, taken as local time", id);
        return zone;
    }

    std::optional<Moment> moment(const ContentLine &line, std::string_view text)
    {
        const auto value = parseTime(text);
        if (!value) {
            complain("No date or time", text);
            return std::nullopt;
        }
        return Moment{*value, zoneOf(line, *value)};
    }

    template<typename Take> void forEachValue(const ContentLine &line, Take take)
    {
        std::string_view rest = line.value;
        while (!rest.empty()) {
            const std::string_view one = rest.substr(0, rest.find(','));
            take(one);
            rest.remove_prefix(std::min(one.size() + 1, rest.size()));
        }
    }

    // Of a property that may come only once the first counts.
    void readStart(const ContentLine &line)
    {
        if (!std::exchange(m_sawStart, true))
            m_times.start = moment(line, line.value);
    }

    void readEnd(const ContentLine &line)
    {
        if (!std::exchange(m_sawEnd, true))
            m_times.end = moment(line, line.value);
    }

    void readRecurrenceID(const ContentLine &line)
    {
        if (std::exchange(m_sawRecurrenceID, true))
            return;
        m_times.recurrenceID = moment(line, line.value);
        m_times.isThisAndFuture = isName(line.parameter("RANGE"), "THISANDFUTURE");
    }

    void readDuration(const ContentLine &line)
    {
        if (std::exchange(m_sawDuration, true))
            return;
        m_times.duration = parseDuration(line.value);
        if (!m_times.duration)
            complain("No duration", line.value);
    }

    void readRule(const ContentLine &line)
    {
        if (auto rule = RecurrenceRule::parse(line.value))
            m_times.rules.push_back(std::move(*rule));
        else
            complain("No recurrence rule that Mivora knows", line.value);
    }

    void readExtraTimes(const ContentLine &line)
    {
        forEachValue(line, [&](std::string_view text) {
            const std::size_t slash = text.find('/');
            auto start = moment(line, text.substr(0, slash));
            if (!start)
                return;
            ExtraTime extra{*start, std::nullopt, std::nullopt};
            if (slash != text.npos && !readPeriodEnd(line, text.substr(slash + 1), extra))
                return;
            m_times.extraTimes.push_back(extra);
        });
    }

    bool readPeriodEnd(const ContentLine &line, std::string_view text, ExtraTime &extra)
    {
        extra.duration = parseDuration(text);
        if (!extra.duration)
            extra.end = moment(line, text);
        return extra.duration || extra.end;
    }

    void readExcluded(const ContentLine &line)
    {
        forEachValue(line, [&](std::string_view text) {
            if (const auto time = moment(line, text))
                m_times.excludedTimes.push_back(*time);
        });
    }

    void readStatus(const ContentLine &line)
    {
        m_times.isCancelled = isName(withoutBlanks(line.value), "CANCELLED");
    }

    void readSequence(const ContentLine &line) { m_times.sequence = sequenceOf(line.value); }

    void readUid(const ContentLine &line)
    {
        if (!std::exchange(m_sawUid, true))
            m_times.uid = unescapedText(withoutBlanks(line.value));
    }

    void readStamp(const ContentLine &line)
    {
        if (const auto time = parseTime(line.value))
            m_times.stamp = asUtc(time->local);
    }

    ZoneTable &m_zones;
    ProblemList &m_problems;
    EventTimes m_times;
    std::string m_buffer;
    const char *m_at = nullptr;
    bool m_sawStart = false;
    bool m_sawEnd = false;
    bool m_sawDuration = false;
    bool m_sawRecurrenceID = false;
    bool m_sawUid = false;
};

} // namespace

std::string_view uidOf(std::string_view line, std::string &buffer)
{
    const std::string_view uid = withoutBlanks(ContentLine::parse(unfolded(line, buffer)).value);
    if (uid.find('\\') == uid.npos)
        return uid;
    buffer = unescapedText(uid);
    return buffer;
}

std::int64_t sequenceOf(std::string_view value)
{
    std::int64_t sequence = 0;
    value = withoutBlanks(value);
    std::from_chars(value.data(), value.data() + value.size(), sequence);
    return sequence;
}

EventTimes readEventTimes(std::string_view text, ZoneTable &zones, ProblemList &problems)
{
    return TimesReader(zones, problems).read(text);
}

} // namespace mivora::ical
