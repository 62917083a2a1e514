#pragma once

#include "CalendarFolder/FileReading.h"

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

struct inotify_event;

namespace mivora {

/// Something happened in a watched folder.
struct FolderChange
{
    std::string folder;
    /// What came, went or was written completely; empty when it is about the folder itself.
    std::string name;
    /// Whether it is not just about that one file: a folder or a link, or a file that has more than one name.
    bool isLinked = false;

    std::string path() const { return name.empty() ? folder : folder + '/' + name; }
};

/// Watches folders (not files) with inotify. Which ones is said in rounds: what is not named again in a round
/// is no longer watched after it.
class FolderWatch
{
public:
    FolderWatch();

    /// To be polled for reading; negative when the system has no watches left at all.
    int descriptor() const { return m_inotify.number(); }

    void beginRound();

    enum class Interest {
        content, ///< also what is written into the files
        names,   ///< what comes and goes: in a home folder much is written that is none of ours
    };

    /// Watches the folder `path` from now on. A folder that isn't there is passed over. Within a round
    /// folders of content come first.
    void add(const std::string &path, Interest interest);

    void endRound();

    /// Whether every folder of the last round is watched. The system's limit is logged once.
    bool isComplete() const { return m_isComplete; }

    struct Changes
    {
        std::vector<FolderChange> changes;
        /// Some changes were lost: everything has to be looked at again.
        bool isIncomplete = false;
    };

    /// What happened since the last call; doesn't wait.
    Changes read();

private:
    void reportMissing();
    void collect(const ::inotify_event &event, Changes &changes);

    FileDescriptor m_inotify;
    std::unordered_map<int, std::string> m_paths;
    std::set<int> m_round;
    bool m_isComplete = true;
    bool m_isReported = false;
};

} // namespace mivora
