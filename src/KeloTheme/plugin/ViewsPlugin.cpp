#include "KeloTheme/plugin/ViewsPlugin.h"

#include "KeloTheme/plugin/Box.h"

#include <QCoreApplication>
#include <QIcon>
#include <QJSEngine>
#include <QLoggingCategory>
#include <QPainter>
#include <QPixmapCache>
#include <QQmlComponent>
#include <QQuickImageProvider>
#include <QQuickItem>
#include <QSvgRenderer>
#include <algorithm>
#include <malloc.h>
#include <utility>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.views")

/// "image://symbol/NAME/COLOR": one of the theme's symbols, drawn in one colour at the size asked for.
class SymbolImages final : public QQuickImageProvider
{
public:
    SymbolImages() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override
    {
        const auto slash = id.lastIndexOf(QLatin1Char('/'));
        QSvgRenderer symbol(QStringLiteral(":/KeloThemeViews/symbols/") + id.left(slash) +
                            QStringLiteral(".svg"));
        if (!symbol.isValid())
            return {};
        *size = requestedSize.isValid() ? requestedSize : symbol.defaultSize();
        QImage image(*size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        symbol.render(&painter);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), QColor(id.mid(slash + 1)));
        return image;
    }
};

// For window frames and task bars of X11, in the sizes that these ask for. Wayland's take it from the desktop
// entry.
QIcon applicationIcon()
{
    QSvgRenderer drawing(QStringLiteral(":/KeloTheme/app.kelo.Mivora.svg"));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawing.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

QUrl componentUrl(const QString &module, const QString &component)
{
    return QUrl(QStringLiteral("qrc:/") + module + QLatin1Char('/') + component + QStringLiteral(".qml"));
}

// The item belongs to the window.
QQuickItem *makeItem(QQmlEngine &engine, QQuickWindow &window, const QUrl &url, const QVariantMap &properties)
{
    QQmlComponent component(&engine, url);
    // Qt 6.4 crashes when a component with errors is to make something.
    QObject *made = component.isReady() ? component.createWithInitialProperties(properties) : nullptr;
    auto *item = qobject_cast<QQuickItem *>(made);
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
                                      [this](QQmlEngine *, QJSEngine *) { return m_appearance; });
    qmlRegisterType<Box>("KeloAppearance", 1, 0, "Box");
}

void ViewsPlugin::start(QObject &appearance)
{
    m_engine.reset();
    m_appearance = &appearance;
    QJSEngine::setObjectOwnership(m_appearance, QJSEngine::CppOwnership);
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
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

void ViewsPlugin::end()
{
    for (const auto &window : std::exchange(m_windows, {}))
        delete window.data();
    releaseUnused();
}

} // namespace kelo
