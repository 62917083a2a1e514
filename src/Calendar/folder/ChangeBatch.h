#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

namespace mivora {

/// Decides when noticed changes are applied: one that comes alone nearly at once, a burst when it is over,
/// and a storm without end about twenty times a second.
class ChangeBatch
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::milliseconds quietTime{3};
    static constexpr std::chrono::milliseconds longestWait{50};
    /// More changes than this at a time are a burst.
    static constexpr std::size_t fewChanges = 8;

    /// \a count changes were noticed at \a now.
    void note(Clock::time_point now, std::size_t count);

    /// When the changes noted so far are to be applied; nothing when there are none.
    std::optional<Clock::time_point> due() const;

    /// They were applied at \a now.
    void applied(Clock::time_point now);

private:
    std::size_t m_count = 0;
    Clock::time_point m_first{};
    Clock::time_point m_last{};
    Clock::time_point m_notBefore{};
};

} // namespace mivora
