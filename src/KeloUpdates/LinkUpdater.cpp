#include "KeloUpdates/LinkUpdater.h"

namespace kelo {

LinkUpdater::LinkUpdater(QString changelogURL, Open open)
    : m_changelogURL(std::move(changelogURL)), m_open(std::move(open))
{
}

void LinkUpdater::checkForUpdates()
{
    m_open(m_changelogURL);
}

} // namespace kelo
