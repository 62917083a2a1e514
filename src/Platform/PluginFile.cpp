#include "Platform/PluginFile.h"

#include <QFileInfo>

namespace mivora {

namespace {

QString pathOf(const char *name, const char *variable)
{
    QString wanted = qEnvironmentVariable(variable);
    if (!wanted.isEmpty())
        return wanted;
    const QString file = QString::fromLatin1(name) + QStringLiteral(".so");
    // Not asked of the application object: it may not be there yet.
    const QString program = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
    const QString beside = QFileInfo(program).path() + QStringLiteral("/../lib/");
    const QString installed = beside + QStringLiteral("mivora/") + file;
    return QFileInfo::exists(installed) ? installed : beside + file;
}

} // namespace

QObject *PluginFile::object()
{
    if (!m_loader.isLoaded())
        m_loader.setFileName(pathOf(m_name, m_variable));
    return m_loader.instance();
}

} // namespace mivora
