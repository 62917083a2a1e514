#pragma once

#include "Calendar/StoreMemory.h"

#include <functional>
#include <mutex>

namespace mivora {

/// Hands what a loader found from its thread to the store's.
class NewsQueue
{
public:
    /// \a onNews is called on the loader's thread when take() has something to give; it must not call back.
    explicit NewsQueue(std::function<void()> onNews) : m_onNews(std::move(onNews)) {}

    void push(LoaderNews news);

    /// What is new since the last call, oldest first.
    std::vector<LoaderNews> take();

    /// From now on nobody is told.
    void close();

private:
    std::mutex m_mutex;
    std::vector<LoaderNews> m_news;
    std::function<void()> m_onNews;
};

} // namespace mivora
