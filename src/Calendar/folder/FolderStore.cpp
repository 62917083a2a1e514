#include "Calendar/folder/FolderStore.h"

#include "Calendar/CalendarLog.h"
#include "Calendar/folder/FolderLoader.h"

namespace mivora {

FolderStore::FolderStore(Setup setup, QObject *parent)
    : EventStore(parent), m_setup(std::move(setup)),
      m_memory(m_setup.window,
               m_setup.roots.empty() ? AuthorizationStatus::denied : AuthorizationStatus::fullAccess)
{
    makeLoader();
    connect(&m_progressCheck, &QTimer::timeout, this, &FolderStore::takeInWhatAnswers);
    connect(&m_progressCheck, &QTimer::timeout, this, &FolderStore::leaveOutWhatHangs);
    // With the event loop: until then the program is about to show its item, which comes first.
    QMetaObject::invokeMethod(this, &FolderStore::startLoader, Qt::QueuedConnection);
}

FolderStore::~FolderStore()
{
    m_loader->stop();
}

void FolderStore::makeLoader()
{
    FolderLoader::Setup loading{m_setup.roots, m_memory.window(), m_setup.addresses, {}};
    for (const auto &[folder, loader] : m_hanging)
        loading.leftOut.insert(folder);
    m_hasNews = false;
    m_loader = std::make_shared<FolderLoader>(std::move(loading), [this] {
        QMetaObject::invokeMethod(this, &FolderStore::receiveNews, Qt::QueuedConnection);
    });
}

void FolderStore::startLoader()
{
    m_loader->start();
    m_progressCheck.start(m_setup.patience / 2);
}

void FolderStore::leaveOutWhatHangs()
{
    // What is known of a folder that hangs later is shown on.
    const auto folder = m_hasNews ? std::nullopt : m_loader->stuckIn(m_setup.patience);
    if (!folder)
        return;
    qCWarning(calendarLog, "%s: the folder does not answer; its calendars are left out until it does",
              printable(*folder).c_str());
    m_loader->stop();
    m_hanging.emplace(*folder, std::move(m_loader));
    makeLoader();
    startLoader();
}

void FolderStore::takeInWhatAnswers()
{
    if (std::erase_if(m_hanging, [](const auto &entry) { return entry.second->hasEnded(); }) == 0)
        return;
    // It may just be slow.
    m_setup.patience *= 2;
    m_loader->stop();
    makeLoader();
    startLoader();
}

void FolderStore::requestFullAccess(AccessAnswer answer)
{
    m_waiting.push_back(std::move(answer));
    if (m_isLoaded)
        QMetaObject::invokeMethod(this, &FolderStore::answerRequests, Qt::QueuedConnection);
}

StoreEvents FolderStore::events(Timestamp from, Timestamp to,
                                const std::optional<std::set<std::string>> &calendarIDs)
{
    if (m_memory.want(from, to))
        m_loader->setWindow(m_memory.window());
    return m_memory.events(from, to, calendarIDs);
}

void FolderStore::setTimeZone(const QTimeZone &zone)
{
    if (m_memory.setTimeZone(zone))
        m_loader->setWindow(m_memory.window());
}

void FolderStore::rescan()
{
    m_loader->rescan();
}

void FolderStore::receiveNews()
{
    std::vector<LoaderNews> allNews = m_loader->takeNews();
    // Of a loader that was stopped meanwhile.
    if (allNews.empty())
        return;
    const bool isFirst = !std::exchange(m_hasNews, true);
    if (isFirst) {
        m_memory = StoreMemory(m_memory.window(), m_memory.status());
        if (m_hanging.empty())
            m_progressCheck.stop();
    }
    bool isChange = isFirst;
    for (LoaderNews &news : allNews)
        isChange = m_memory.apply(std::move(news)) || isChange;
    m_isLoaded = true;
    answerRequests();
    if (isChange)
        Q_EMIT changed();
}

void FolderStore::answerRequests()
{
    for (const AccessAnswer &answer : std::exchange(m_waiting, {}))
        answer(m_memory.status() == AuthorizationStatus::fullAccess);
}

} // namespace mivora
