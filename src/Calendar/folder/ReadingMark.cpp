#include "Calendar/folder/ReadingMark.h"

namespace mivora {

ReadingMark::Scope::Scope(ReadingMark &mark, const std::string &folder) : m_mark(mark)
{
    const std::lock_guard lock(m_mark.m_mutex);
    m_mark.m_folder = &folder;
    m_mark.m_since = std::chrono::steady_clock::now();
}

ReadingMark::Scope::~Scope()
{
    const std::lock_guard lock(m_mark.m_mutex);
    m_mark.m_folder = nullptr;
}

std::optional<std::string> ReadingMark::stuckIn(std::chrono::milliseconds limit) const
{
    const std::lock_guard lock(m_mutex);
    if (!m_folder || std::chrono::steady_clock::now() - m_since < limit)
        return std::nullopt;
    return *m_folder;
}

} // namespace mivora
