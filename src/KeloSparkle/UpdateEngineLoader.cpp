#include "KeloSparkle/UpdateEngineLoader.h"

#include "KeloSparkle/UpdateEngine.h"

#include <QLoggingCategory>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.sparkle")

} // namespace

UpdateEngine *UpdateEngineLoader::engine()
{
    auto *engine = m_plugin.get<UpdateEngine>();
    if (!engine)
        qCCritical(log).noquote() << "Updates can't be looked for:" << m_plugin.errorText();
    return engine;
}

} // namespace kelo
