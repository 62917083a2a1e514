#include "Calendar/folder/ChangeBatch.h"

#include <algorithm>

namespace mivora {

void ChangeBatch::note(Clock::time_point now, std::size_t count)
{
    if (count == 0)
        return;
    if (m_count == 0)
        m_first = now;
    m_last = now;
    m_count += count;
}

std::optional<ChangeBatch::Clock::time_point> ChangeBatch::due() const
{
    if (m_count == 0)
        return std::nullopt;
    const Clock::time_point settled = std::min<Clock::time_point>(m_last + quietTime, m_first + longestWait);
    return std::max(settled, m_notBefore);
}

void ChangeBatch::applied(Clock::time_point now)
{
    if (m_count > fewChanges)
        m_notBefore = now + longestWait;
    m_count = 0;
}

} // namespace mivora
