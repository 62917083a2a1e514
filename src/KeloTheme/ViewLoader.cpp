#include "KeloTheme/ViewLoader.h"

#include "KeloTheme/Appearance.h"

#include <QLoggingCategory>
#include <algorithm>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.theme")

} // namespace

ViewLoader::ViewLoader(Appearance &appearance) : m_appearance(appearance) {}

ViewLoader::~ViewLoader()
{
    if (m_host)
        m_host->end();
}

bool ViewLoader::load()
{
    if (m_host || m_hasFailed)
        return m_host;
    m_host = m_plugin.get<ViewHost>();
    m_hasFailed = !m_host;
    if (m_hasFailed) {
        qCCritical(log).noquote() << "The views can't be loaded:" << m_plugin.errorText();
        return false;
    }
    m_appearance.readXSettings();
    m_host->start(m_appearance);
    return true;
}

QSize ViewLoader::scaled(const QSize &size) const
{
    return (QSizeF(size) * std::max(m_appearance.textScale(), 1.0)).toSize();
}

QWindow *ViewLoader::createWindow(const ViewSpec &spec)
{
    return load() ? m_host->createWindow(spec) : nullptr;
}

void ViewLoader::releaseUnused()
{
    if (m_host)
        m_host->releaseUnused();
}

} // namespace kelo
