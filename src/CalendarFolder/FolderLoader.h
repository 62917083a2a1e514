#pragma once

#include "Calendar/CalendarLoader.h"
#include "CalendarFolder/CalendarRoots.h"

#include <chrono>
#include <future>
#include <thread>

namespace mivora {

class FolderFollower;

/// Calendars in folders of iCalendar files, as vdirsyncer, khal and others keep them.
///
/// In a root, a folder with .ics files is a calendar, a folder of such folders an account, and an .ics file a
/// calendar of its own. Files are read on a thread of the loader's own, and followed when they change. All of
/// them can be read as soon as one root can: access is full then, else denied. A folder that hangs, as one of
/// a network does, is left out until it answers.
class FolderLoader final : public CalendarLoader
{
public:
    struct Setup
    {
        std::vector<CalendarRoot> roots;
        /// The user's own e-mail addresses, for calendars that name no owner.
        std::vector<std::string> addresses{};
        /// How long a file that had events may be empty or cut off before that is believed.
        std::chrono::milliseconds halfWrittenTime{250};
    };

    explicit FolderLoader(Setup setup) : m_setup(std::move(setup)) {}

    /// Waits for the file being read, but only shortly for one that doesn't come.
    ~FolderLoader() override;
    FolderLoader(const FolderLoader &) = delete;
    FolderLoader &operator=(const FolderLoader &) = delete;

    void start(const EventWindow &window, Deliver deliver) override;
    void setWindow(const EventWindow &window) override;

private:
    Setup m_setup;
    /// Its thread owns it as well: one that hangs outlives the loader.
    std::shared_ptr<FolderFollower> m_follower;
    std::future<void> m_end;
    std::thread m_thread;
};

} // namespace mivora
