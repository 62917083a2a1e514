#pragma once

#include <algorithm>
#include <chrono>

namespace mivora {

/// How long to wait before the next attempt: a moment at first, twice as long after each failure, up to a
/// minute. After a good while without failure it begins anew.
class Backoff
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::milliseconds shortest{250};
    static constexpr std::chrono::milliseconds longest = std::chrono::minutes(1);
    static constexpr std::chrono::minutes forgottenAfter{5};

    /// An attempt failed at \a now.
    std::chrono::milliseconds next(Clock::time_point now)
    {
        const bool isNew = m_last == Clock::time_point() || now - m_last > forgottenAfter;
        m_last = now;
        m_delay = isNew ? shortest : std::min(2 * m_delay, longest);
        return m_delay;
    }

private:
    std::chrono::milliseconds m_delay{0};
    Clock::time_point m_last{};
};

} // namespace mivora
