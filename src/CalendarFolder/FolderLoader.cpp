#include "CalendarFolder/FolderLoader.h"

#include "CalendarFolder/FolderFollower.h"

namespace mivora {

FolderLoader::~FolderLoader()
{
    constexpr std::chrono::seconds patience{1};
    if (!m_follower)
        return;
    m_follower->stop();
    if (m_end.wait_for(patience) == std::future_status::ready)
        m_thread.join();
    else
        m_thread.detach();
}

void FolderLoader::start(const EventWindow &window, Deliver deliver)
{
    m_follower = std::make_shared<FolderFollower>(std::move(m_setup), window, std::move(deliver));
    std::packaged_task<void()> task([follower = m_follower] { follower->run(); });
    m_end = task.get_future();
    m_thread = std::thread(std::move(task));
}

void FolderLoader::setWindow(const EventWindow &window)
{
    if (m_follower)
        m_follower->setWindow(window);
}

} // namespace mivora
