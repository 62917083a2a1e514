#pragma once

#include "Calendar/AccessMemory.h"
#include "Calendar/CalendarFolder.h"
#include "Calendar/EventKitSource.h"
#include "CalendarFolder/FolderLoader.h"

#include <algorithm>

namespace mivora {

/// A loaded store, by default for the days around 10 March 2026 in UTC.
class LoadedStore
{
public:
    explicit LoadedStore(std::unique_ptr<CalendarLoader> loader)
        : m_store(m_access, windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc()),
                  loadersOf(std::move(loader)))
    {
        waitFor([this] { return m_store.isLoaded(); }, patience);
    }

    /// Of the calendars in folders.
    explicit LoadedStore(const std::vector<std::string> &roots,
                         const std::vector<std::string> &addresses = {},
                         std::chrono::milliseconds halfWrittenTime = std::chrono::milliseconds(10))
        : LoadedStore(std::make_unique<FolderLoader>(FolderLoader::Setup{
              .roots = rootsAt(roots), .addresses = addresses, .halfWrittenTime = halfWrittenTime}))
    {
    }

    EventKitSource &store() { return m_store; }

    /// A calendar in each line, in order: "id|title|account|colour".
    std::vector<std::string> calendars() const
    {
        std::vector<std::string> lines;
        for (const CalendarInfo &c : m_store.calendars())
            lines.push_back(c.id + '|' + c.title + '|' + c.accountTitle + '|' +
                            (c.color ? c.color->hex() : "-"));
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    /// What is there from `from` on, by default on 10 March.
    std::vector<Meeting> meetings(const char *from = "2026-03-10T00:00:00Z", int days = 1)
    {
        return m_store.meetings(at(from), at(from) + Seconds(86400 * days), std::nullopt);
    }

    std::vector<std::string> titles(const char *from = "2026-03-10T00:00:00Z", int days = 1)
    {
        std::vector<std::string> found = mivora::titles(meetings(from, days));
        std::sort(found.begin(), found.end());
        return found;
    }

    bool waitForTitles(const std::vector<std::string> &wanted, const char *from = "2026-03-10T00:00:00Z",
                       int days = 1)
    {
        return waitFor([&] { return titles(from, days) == wanted; }, patience);
    }

    /// Only what hangs takes longer.
    static constexpr std::chrono::seconds patience{40};

private:
    static EventKitSource::Loaders loadersOf(std::unique_ptr<CalendarLoader> loader)
    {
        EventKitSource::Loaders loaders;
        loaders.push_back(std::move(loader));
        return loaders;
    }

    static std::vector<CalendarRoot> rootsAt(const std::vector<std::string> &paths)
    {
        std::vector<CalendarRoot> roots;
        for (const std::string &path : paths)
            roots.push_back({path, roots.empty() ? "" : path.substr(path.rfind('/') + 1) + ':'});
        return roots;
    }

    AccessMemory m_access{QDir::temp().filePath(QStringLiteral("unused")), AccessMemory::Permission::given};
    EventKitSource m_store;
};

} // namespace mivora
