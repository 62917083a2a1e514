#include "ICalendar/ZoneTable.h"

#include "ICalendar/ContentLine.h"
#include "ICalendar/ZoneDefinition.h"

#include <QFileInfo>
#include <algorithm>

namespace mivora::ical {

namespace {

/// IDs become file names further down: nothing but names is let through.
bool looksLikeName(std::string_view id)
{
    return !id.empty() && id.size() < 64 && id.front() != '/' &&
           std::all_of(id.begin(), id.end(), [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                      c == '/' || c == '_' || c == '-' || c == '+';
           });
}

/// Whether the zone database has \a name, where Qt looks for it.
bool hasFile(const QByteArray &name)
{
    return QFileInfo(QStringLiteral("/usr/share/zoneinfo/") + QString::fromLatin1(name)).isFile() ||
           QFileInfo(QStringLiteral("/usr/lib/zoneinfo/") + QString::fromLatin1(name)).isFile();
}

std::unique_ptr<Zone> namedZone(std::string_view id)
{
    if (!looksLikeName(id))
        return nullptr;
    const QByteArray name(id.data(), qsizetype(id.size()));
    // Qt's list of zones has no links such as "US/Eastern", and its constructor takes any word for a POSIX
    // rule.
    if (!QTimeZone::isTimeZoneIdAvailable(name) && !hasFile(name))
        return nullptr;
    const QTimeZone zone(name);
    return zone.isValid() ? std::make_unique<SystemZone>(zone) : nullptr;
}

std::unique_ptr<Zone> windowsZone(std::string_view id)
{
    if (id.size() > 64)
        return nullptr;
    const QByteArray name = QTimeZone::windowsIdToDefaultIanaId(QByteArray(id.data(), qsizetype(id.size())));
    return name.isEmpty() ? nullptr : std::make_unique<SystemZone>(QTimeZone(name));
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

/// Such as "EST", which is New York's time to some and five hours behind UTC to the system's database.
bool isAbbreviation(std::string_view id)
{
    return id.size() <= 4 && std::all_of(id.begin(), id.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
}

std::unique_ptr<Zone> systemZone(std::string_view id)
{
    if (auto zone = namedZone(id))
        return zone;
    if (auto zone = windowsZone(id))
        return zone;
    return prefixedZone(id);
}

} // namespace

ZoneTable::ZoneTable(const std::vector<std::string_view> &definitions, LocalTime horizon, WorkBudget &budget)
    : m_definitions(definitions), m_horizon(horizon), m_budget(budget)
{
}

const Zone *ZoneTable::find(std::string_view id)
{
    const auto known = m_zones.find(id);
    if (known != m_zones.end())
        return known->second.get();
    return m_zones.emplace(id, make(id)).first->second.get();
}

std::unique_ptr<Zone> ZoneTable::make(std::string_view id)
{
    if (isAbbreviation(id))
        if (auto zone = defined(id))
            return zone;
    if (auto zone = systemZone(id))
        return zone;
    return defined(id);
}

std::unique_ptr<Zone> ZoneTable::defined(std::string_view id)
{
    if (m_byID.empty())
        for (const std::string_view definition : m_definitions) {
            const std::string id = zoneProperty(definition, "TZID");
            m_byID.emplace(id, definition);
            // As a property it is a TEXT, with escapes; as a parameter it is in quotes, without.
            m_byID.emplace(unescapedText(id), definition);
        }
    const auto found = m_byID.find(id);
    if (found == m_byID.end())
        return nullptr;
    if (auto zone = systemZone(zoneProperty(found->second, "X-LIC-LOCATION")))
        return zone;
    return definedZone(found->second, m_horizon, m_budget);
}

} // namespace mivora::ical
