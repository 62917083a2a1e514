#include "Calendar/NewsQueue.h"

#include <utility>

namespace mivora {

void NewsQueue::push(LoaderNews news)
{
    const std::lock_guard lock(m_mutex);
    m_news.push_back(std::move(news));
    if (m_news.size() == 1 && m_onNews)
        m_onNews();
}

std::vector<LoaderNews> NewsQueue::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_news, {});
}

void NewsQueue::close()
{
    const std::lock_guard lock(m_mutex);
    m_onNews = nullptr;
}

} // namespace mivora
