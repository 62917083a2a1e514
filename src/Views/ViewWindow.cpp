#include "Views/ViewWindow.h"

#include "Views/ApplicationIcon.h"

#include <QLoggingCategory>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

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

} // namespace

std::unique_ptr<QQuickWindow> makeViewWindow(QQmlEngine &engine, const ViewSpec &spec)
{
    auto window = std::make_unique<QQuickWindow>();
    const bool isFloating = spec.kind == ViewKind::floating;
    QQuickItem *content =
        makeItem(engine, *window, componentUrl(spec.module, spec.component), spec.properties);
    if (!content)
        return nullptr;
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
    window->setTitle(spec.title);
    window->resize(spec.size);
    return window;
}

} // namespace kelo
