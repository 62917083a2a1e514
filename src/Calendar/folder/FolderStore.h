#pragma once

#include "Calendar/StoreMemory.h"
#include "Calendar/folder/CalendarRoots.h"

#include <QTimer>
#include <map>
#include <memory>

namespace mivora {

class FolderLoader;

/// Calendars in folders of iCalendar files, as vdirsyncer, khal and others keep them.
///
/// In a root, a folder with .ics files is a calendar, a folder of such folders an account, and an .ics file a
/// calendar of its own. Files are read on threads of the store's own, and followed when they change. All of
/// them can be read as soon as one root can: access is full then, else denied. A folder that hangs, as one of
/// a network does, is left out of the first load until it answers.
class FolderStore final : public EventStore
{
    Q_OBJECT

public:
    struct Setup
    {
        std::vector<CalendarRoot> roots;
        /// What is loaded first.
        EventWindow window;
        /// The user's own e-mail addresses, for calendars that don't name their owner.
        std::vector<std::string> addresses;
        /// How long one read may take at first before its folder counts as hanging.
        std::chrono::milliseconds patience{3000};
    };

    /// Begins to load at once.
    explicit FolderStore(Setup setup, QObject *parent = nullptr);
    ~FolderStore() override;

    AuthorizationStatus authorizationStatus() const override { return m_memory.status(); }

    void requestFullAccess(AccessAnswer answer) override;

    std::vector<StoreCalendar> calendars() const override { return m_memory.calendars(); }

    StoreEvents events(Timestamp from, Timestamp to,
                       const std::optional<std::set<std::string>> &calendarIDs) override;

    bool isLoaded() const override { return m_isLoaded; }

    void setTimeZone(const QTimeZone &zone) override;

    /// Looks for changes in all folders, for file systems that don't tell of them.
    void rescan();

private:
    void makeLoader();
    void startLoader();
    void leaveOutWhatHangs();
    void takeInWhatAnswers();
    void receiveNews();
    void answerRequests();

    Setup m_setup;
    StoreMemory m_memory;
    std::vector<AccessAnswer> m_waiting;
    bool m_isLoaded = false;
    /// Whether the memory is the loader's, and not that of the one before it.
    bool m_hasNews = false;
    std::shared_ptr<FolderLoader> m_loader;
    /// The folders that are left out, each with the loader that still hangs in it.
    std::map<std::string, std::shared_ptr<FolderLoader>> m_hanging;
    QTimer m_progressCheck;
};

} // namespace mivora
