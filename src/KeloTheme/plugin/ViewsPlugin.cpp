#include "KeloTheme/plugin/ViewsPlugin.h"

#include "KeloTheme/plugin/ViewImages.h"

#include <QCoreApplication>
#include <QJSEngine>
#include <QLoggingCategory>
#include <QPixmapCache>
#include <QQmlComponent>
#include <QQuickItem>
#include <algorithm>
#include <malloc.h>
#include <utility>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.views")

QUrl componentUrl(const QString &module, const QString &component)
{
    return QUrl(QStringLiteral("qrc:/") + module + QLatin1Char('/') + component + QStringLiteral(".qml"));
}

// The item belongs to the window.
QQuickItem *makeItem(QQmlEngine &engine, QQuickWindow &window, const QUrl &url, const QVariantMap &properties)
{
    QQmlComponent component(&engine, url);
    auto *item = qobject_cast<QQuickItem *>(component.createWithInitialProperties(properties));
    if (!item) {
        qCCritical(log).noquote() << "The view can't be shown:" << component.errorString();
        return nullptr;
    }
    item->setParent(&window);
    return item;
}

void setTranslucent(QQuickWindow &window)
{
    QSurfaceFormat format = window.format();
    format.setAlphaBufferSize(8);
    window.setFormat(format);
    window.setColor(Qt::transparent);
}

// Null, with a line in the log, when its QML has errors.
std::unique_ptr<QQuickWindow> makeWindow(QQmlEngine &engine, const ViewSpec &spec)
{
    auto window = std::make_unique<QQuickWindow>();
    const bool isFloating = spec.kind == ViewKind::floating;
    QQuickItem *content =
        makeItem(engine, *window, componentUrl(spec.module, spec.component), spec.properties);
    if (!content)
        return nullptr;
    window->setTitle(spec.title);
    window->resize(spec.size);
    if (spec.kind == ViewKind::popup) {
        content->setParentItem(window->contentItem());
        content->setSize(spec.size);
        return window;
    }
    QVariantMap properties{{QStringLiteral("content"), QVariant::fromValue(content)}};
    if (isFloating) {
        setTranslucent(*window);
        properties.insert(QStringLiteral("surface"), QVariant::fromValue(spec.surface));
    } else {
        window->setIcon(applicationIcon());
    }
    const QString frame = isFloating ? QStringLiteral("FloatingSurface") : QStringLiteral("WindowSurface");
    QQuickItem *root =
        makeItem(engine, *window, componentUrl(QStringLiteral("KeloThemeViews"), frame), properties);
    if (!root)
        return nullptr;
    root->setParentItem(window->contentItem());
    return window;
}

} // namespace

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
    m_windows.emplace_back(makeWindow(engine(), spec).release());
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
}

void ViewsPlugin::end()
{
    for (const auto &window : std::exchange(m_windows, {}))
        delete window.data();
    releaseUnused();
}

} // namespace kelo
