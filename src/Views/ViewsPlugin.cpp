#include "Views/ViewsPlugin.h"

#include "Views/CodePages.h"
#include "Views/ContextImages.h"
#include "Views/SymbolImages.h"
#include "Views/ViewWindow.h"

#include <QCoreApplication>
#include <QJSEngine>
#include <QPixmapCache>
#include <algorithm>
#include <malloc.h>
#include <utility>

namespace kelo {

ViewsPlugin::ViewsPlugin()
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    qmlRegisterSingletonType<QObject>("KeloAppearance", 1, 0, "Appearance",
                                      [this](QQmlEngine *, QJSEngine *) { return m_context.appearance; });
}

void ViewsPlugin::start(const ViewContext &context)
{
    m_engine.reset();
    m_context = context;
    QJSEngine::setObjectOwnership(context.appearance, QJSEngine::CppOwnership);
}

QQmlEngine &ViewsPlugin::engine()
{
    if (!m_engine) {
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/"));
        m_engine->addImageProvider(QStringLiteral("kelo"), new ContextImages(m_context.image));
        m_engine->addImageProvider(QStringLiteral("symbol"), new SymbolImages);
        // Not now: it is a view that asks for it.
        QObject::connect(m_engine.get(), &QQmlEngine::quit, QCoreApplication::instance(),
                         &QCoreApplication::quit, Qt::QueuedConnection);
    }
    return *m_engine;
}

QWindow *ViewsPlugin::createWindow(const ViewSpec &spec)
{
    std::erase_if(m_windows, [](const auto &window) { return window.isNull(); });
    m_windows.emplace_back(makeViewWindow(engine(), spec).release());
    return m_windows.back();
}

void ViewsPlugin::releaseUnused()
{
    const bool isUsed =
        std::any_of(m_windows.begin(), m_windows.end(), [](const auto &window) { return window; });
    if (isUsed)
        return;
    m_windows.clear();
    // Rows of lists are deleted by an event, and animations in them run on until then.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    m_engine.reset();
    // Of each window's icon Qt keeps a copy there, for half a minute after the window.
    QPixmapCache::clear();
    // The engine's memory is scattered over the heap: without this the system doesn't get it back.
    malloc_trim(0);
    releaseCodePages();
}

void ViewsPlugin::end()
{
    for (const auto &window : std::exchange(m_windows, {}))
        delete window.data();
    releaseUnused();
}

} // namespace kelo
