#include "ICalendar/TimeZones.h"

#include "ICalendar/ContentLine.h"

#include <QDateTime>
#include <QFileInfo>
#include <algorithm>

namespace mivora::ical {

using namespace std::chrono;

namespace {

/// Enough for rules that began in 1601, as some programs write them.
constexpr std::int64_t workPerZone = 200'000;

/// A zone of the system's database.
class SystemZone final : public Zone
{
public:
    explicit SystemZone(const QTimeZone &zone) : m_zone(zone) {}

    seconds offsetAt(UtcTime time) const override
    {
        return seconds(m_zone.offsetFromUtc(
            QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), QTimeZone::utc())));
    }

private:
    QTimeZone m_zone;
};

/// A STANDARD or DAYLIGHT part of a VTIMEZONE.
struct Observance
{
    std::optional<TimeValue> start;
    std::optional<seconds> from;
    std::optional<seconds> to;
    std::vector<RecurrenceRule> rules;
    std::vector<LocalTime> extraTimes;
};

/// A zone that a text defines itself (RFC 5545, 3.6.5).
class DefinedZone final : public Zone
{
public:
    DefinedZone(const std::vector<Observance> &observances, LocalTime horizon, WorkBudget &budget)
    {
        const auto first =
            std::min_element(observances.begin(), observances.end(), [](const auto &left, const auto &right) {
                return left.start->local < right.start->local;
            });
        m_first = *first->from;
        for (const Observance &observance : observances)
            addChanges(observance, horizon, budget);
        std::stable_sort(m_changes.begin(), m_changes.end(),
                         [](const Change &left, const Change &right) { return left.at < right.at; });
    }

    seconds offsetAt(UtcTime time) const override
    {
        const auto next = std::upper_bound(m_changes.begin(), m_changes.end(), time,
                                           [](UtcTime t, const Change &change) { return t < change.at; });
        return next == m_changes.begin() ? m_first : std::prev(next)->offset;
    }

private:
    struct Change
    {
        UtcTime at{};
        seconds offset{};
    };

    void addChanges(const Observance &observance, LocalTime horizon, WorkBudget &budget)
    {
        const auto add = [&](LocalTime local) {
            m_changes.push_back({asUtc(local) - *observance.from, *observance.to});
        };
        add(observance.start->local);
        for (const LocalTime time : observance.extraTimes)
            add(time);
        for (const RecurrenceRule &rule : observance.rules)
            expandRule(rule, *observance.start, {observance.start->local, horizon}, budget,
                       [&](LocalTime time) {
                           const LocalTime compared =
                               rule.until && rule.until->isUtc ? time - *observance.from : time;
                           if (rule.until && compared > rule.until->local)
                               return false;
                           add(time);
                           return true;
                       });
    }

    /// In force before all changes.
    seconds m_first{};
    std::vector<Change> m_changes;
};

/// Reads "+0130" or "-013015".
std::optional<seconds> parseOffset(std::string_view text)
{
    text = withoutBlanks(text);
    if ((text.size() != 5 && text.size() != 7) || (text[0] != '+' && text[0] != '-') ||
        text.find_first_not_of("0123456789", 1) != text.npos)
        return std::nullopt;
    const auto part = [&](std::size_t at) {
        return at < text.size() ? (text[at] - '0') * 10 + text[at + 1] - '0' : 0;
    };
    if (part(1) > 23 || part(3) > 59 || part(5) > 59)
        return std::nullopt;
    const seconds offset = hours(part(1)) + minutes(part(3)) + seconds(part(5));
    return text[0] == '-' ? -offset : offset;
}

void readProperty(std::string_view line, std::string_view value, Observance &observance)
{
    if (hasName(line, "DTSTART")) {
        observance.start = parseTime(value);
    } else if (hasName(line, "TZOFFSETFROM")) {
        observance.from = parseOffset(value);
    } else if (hasName(line, "TZOFFSETTO")) {
        observance.to = parseOffset(value);
    } else if (hasName(line, "RDATE")) {
        while (!value.empty())
            if (const auto time = parseTime(takePart(value, ',')))
                observance.extraTimes.push_back(time->local);
    } else if (hasName(line, "RRULE")) {
        if (auto rule = RecurrenceRule::parse(value); rule && rule->frequency >= Frequency::daily)
            observance.rules.push_back(std::move(*rule));
    }
}

std::unique_ptr<Zone> zoneFrom(std::string_view definition, LocalTime horizon, WorkBudget &all)
{
    std::vector<Observance> observances;
    std::string buffer;
    while (!definition.empty()) {
        const std::string_view line = takeLine(definition);
        if (hasName(line, "BEGIN"))
            observances.emplace_back();
        else if (!observances.empty())
            readProperty(line, ContentLine::parse(line, buffer).value, observances.back());
    }
    std::erase_if(observances, [](const Observance &observance) {
        return !observance.start || !observance.from || !observance.to;
    });
    if (observances.empty())
        return nullptr;
    WorkBudget budget{std::clamp<std::int64_t>(all.left, 0, workPerZone)};
    const std::int64_t given = budget.left;
    auto zone = std::make_unique<DefinedZone>(observances, horizon, budget);
    all.spend(given - budget.left);
    return zone;
}

/// The value of the property `name` of a VTIMEZONE; empty when it has none.
std::string zoneProperty(std::string_view definition, std::string_view name)
{
    std::string value, buffer;
    forEachLine(definition, [&](std::string_view line) {
        if (value.empty() && hasName(line, name))
            value = withoutBlanks(ContentLine::parse(line, buffer).value);
    });
    return value;
}

/// IDs become file names further down: nothing but names is let through.
bool looksLikeName(std::string_view id)
{
    return !id.empty() && id.size() < 64 && id.front() != '/' &&
           std::all_of(id.begin(), id.end(), [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                      c == '/' || c == '_' || c == '-' || c == '+';
           });
}

/// Whether the zone database has `name`, where Qt looks for it.
bool hasFile(const QByteArray &name)
{
    return QFileInfo(QStringLiteral("/usr/share/zoneinfo/") + QString::fromLatin1(name)).isFile() ||
           QFileInfo(QStringLiteral("/usr/lib/zoneinfo/") + QString::fromLatin1(name)).isFile();
}

/// What a zone is called now that has got another name, such as "US/Eastern"; else `name` itself. Many
/// systems no longer install the old names.
QByteArray currentName(const QByteArray &name)
{
    static constexpr std::string_view names =
#include "ICalendar/OldZoneNames.inc"
        ;
    const std::string entry = '\n' + name.toStdString() + ' ';
    const auto found = names.find(entry);
    if (found == names.npos)
        return name;
    const auto current = names.substr(found + entry.size());
    return QByteArray(current.data(), qsizetype(current.find('\n')));
}

std::unique_ptr<Zone> namedZone(std::string_view id)
{
    if (!looksLikeName(id))
        return nullptr;
    QByteArray name(id.data(), qsizetype(id.size()));
    if (!hasFile(name))
        name = currentName(name);
    // Qt's list of zones has no links such as "US/Eastern", and its constructor takes any word for a POSIX
    // rule.
    if (!QTimeZone::isTimeZoneIdAvailable(name) && !hasFile(name))
        return nullptr;
    const QTimeZone zone(name);
    return zone.isValid() ? std::make_unique<SystemZone>(zone) : nullptr;
}

/// Some programs write "/their.domain/version/Europe/Berlin" (RFC 5545, 3.2.19: a globally unique
/// identifier).
std::unique_ptr<Zone> prefixedZone(std::string_view id)
{
    while (id.size() < 256 && id.find('/') != id.npos) {
        id.remove_prefix(id.find('/') + 1);
        if (isName(id, "UTC"))
            return namedZone("UTC");
        if (auto zone = namedZone(id); zone && id.find('/') != id.npos)
            return zone;
    }
    return nullptr;
}

std::unique_ptr<Zone> systemZone(std::string_view id)
{
    if (auto zone = namedZone(id))
        return zone;
    const QByteArray windowsID(id.data(), qsizetype(std::min<std::size_t>(id.size(), 64)));
    const QByteArray name = QTimeZone::windowsIdToDefaultIanaId(windowsID);
    if (auto zone = namedZone({name.data(), std::size_t(name.size())}))
        return zone;
    return prefixedZone(id);
}

/// Such as "EST", which is New York's time to some and five hours behind UTC to the system's database.
bool isAbbreviation(std::string_view id)
{
    return id.size() <= 4 && std::all_of(id.begin(), id.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

} // namespace

UtcTime Zone::toUtc(LocalTime local) const
{
    // No offset reaches a day, and no zone changes twice within two.
    const UtcTime near = asUtc(local);
    const seconds before = offsetAt(near - days(1));
    const seconds after = offsetAt(near + days(1));
    if (before == after || offsetAt(near - before) == before)
        return near - before;
    return offsetAt(near - after) == after ? near - after : near - before;
}

TimeZones::TimeZones(const QTimeZone &own, const ZoneDefinitions &definitions, LocalTime horizon)
    : m_floating(std::make_unique<SystemZone>(own)), m_utc(std::make_unique<SystemZone>(QTimeZone::utc())),
      m_definitions(definitions), m_horizon(horizon)
{
}

const Zone *TimeZones::find(std::size_t object, std::string_view id)
{
    const Key key(object, id);
    const auto [entry, isNew] = m_zones.try_emplace(key);
    std::unique_ptr<Zone> &zone = entry->second;
    if (isNew && isAbbreviation(id))
        zone = defined(key);
    if (isNew && !zone)
        zone = systemZone(id);
    if (isNew && !zone)
        zone = defined(key);
    return zone.get();
}

std::unique_ptr<Zone> TimeZones::defined(const Key &key)
{
    if (m_byID.empty())
        for (std::size_t object = 0; object < m_definitions.size(); ++object)
            for (const std::string_view definition : m_definitions[object]) {
                const std::string id = zoneProperty(definition, "TZID");
                m_byID.emplace(Key(object, id), definition);
                // As a property it is a TEXT, with escapes; as a parameter it is in quotes, without.
                m_byID.emplace(Key(object, unescapedText(id)), definition);
            }
    const auto found = m_byID.find(key);
    if (found == m_byID.end())
        return nullptr;
    const std::string place = zoneProperty(found->second, "X-LIC-LOCATION");
    if (auto zone = isAbbreviation(place) ? nullptr : systemZone(place))
        return zone;
    return zoneFrom(found->second, m_horizon, m_budget);
}

} // namespace mivora::ical
