#include "Calendar/NewsQueue.h"

#include <utility>

namespace mivora {

void NewsQueue::push(LoaderNews news)
{
    bool isFirst = false;
    {
        const std::lock_guard lock(m_mutex);
        isFirst = m_news.empty();
        m_news.push_back(std::move(news));
    }
    if (isFirst)
        m_onNews();
}

std::vector<LoaderNews> NewsQueue::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_news, {});
}

} // namespace mivora
