#include "KeloSparkle/UpdateEngineLoader.h"

#include "KeloSparkle/UpdateEngine.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLoggingCategory>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.sparkle")

QString pluginFile()
{
    const QString wanted = qEnvironmentVariable("MIVORA_UPDATES");
    if (!wanted.isEmpty())
        return wanted;
    const QString beside = QCoreApplication::applicationDirPath() + QStringLiteral("/../lib/");
    const QString installed = beside + QStringLiteral("mivora/mivora-updates.so");
    return QFileInfo::exists(installed) ? installed : beside + QStringLiteral("mivora-updates.so");
}

} // namespace

UpdateEngine *UpdateEngineLoader::engine()
{
    if (!m_plugin.isLoaded())
        m_plugin.setFileName(pluginFile());
    auto *engine = qobject_cast<UpdateEngine *>(m_plugin.instance());
    if (!engine)
        qCCritical(log).noquote() << "Updates can't be looked for:" << m_plugin.errorString();
    return engine;
}

} // namespace kelo
