#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace mivora {

/// The folder that a thread is reading in, for other threads: a folder of a network that hangs holds up
/// whoever reads it, and nothing ends that but the network.
class ReadingMark final
{
public:
    /// The mark stands while this lives.
    class Scope final
    {
    public:
        /// \a folder must outlive the scope.
        Scope(ReadingMark &mark, const std::string &folder);
        ~Scope();
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

    private:
        ReadingMark &m_mark;
    };

    /// The folder, when it has been read in for longer than \a limit without a pause.
    std::optional<std::string> stuckIn(std::chrono::milliseconds limit) const;

private:
    mutable std::mutex m_mutex;
    const std::string *m_folder = nullptr;
    std::chrono::steady_clock::time_point m_since;
};

} // namespace mivora
