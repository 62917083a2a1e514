#include "KeloPanel/LayerShell.h"

#include <LayerShellQt/Window>
#include <QCoreApplication>
#include <QExposeEvent>
#include <QGuiApplication>
#include <QWindow>
#include <qpa/qplatformwindow_p.h>

namespace kelo {

namespace {

using Surface = LayerShellQt::Window;

Surface::Anchors anchorsOf(Qt::Edges edges)
{
    Surface::Anchors anchors = Surface::AnchorNone;
    anchors.setFlag(Surface::AnchorTop, edges.testFlag(Qt::TopEdge));
    anchors.setFlag(Surface::AnchorBottom, edges.testFlag(Qt::BottomEdge));
    anchors.setFlag(Surface::AnchorLeft, edges.testFlag(Qt::LeftEdge));
    anchors.setFlag(Surface::AnchorRight, edges.testFlag(Qt::RightEdge));
    return anchors;
}

// What was set takes effect with the next picture, for which there is no other reason: so the last one is
// sent again.
void commit(QWindow &window)
{
    QExposeEvent event(QRect(QPoint(), window.size()));
    if (window.isExposed())
        QCoreApplication::sendEvent(&window, &event);
}

class LayerShellPlugin final : public QObject, public LayerShell
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.kelo.LayerShell/2")
    Q_INTERFACES(kelo::LayerShell)

public:
    void prepare(QWindow &window, const QString &scope) override
    {
        Surface *surface = Surface::get(&window);
        surface->setScope(scope);
        surface->setLayer(Surface::LayerOverlay);
        surface->setScreenConfiguration(Surface::ScreenFromCompositor);
        surface->setKeyboardInteractivity(Surface::KeyboardInteractivityNone);
        surface->setCloseOnDismissed(true);
    }

    void place(QWindow &window, Qt::Edges edges, const QMargins &distance) override
    {
        Surface *surface = Surface::get(&window);
        surface->setAnchors(anchorsOf(edges));
        surface->setMargins(distance);
        commit(window);
    }

    void setHasKeyboard(QWindow &window, bool has) override
    {
        Surface::get(&window)->setKeyboardInteractivity(has ? Surface::KeyboardInteractivityExclusive
                                                            : Surface::KeyboardInteractivityNone);
        commit(window);
    }

    // Qt has no public call for it. The keyboard can come after the press that hid the window, when Qt has no
    // surface any more to ask with.
    void requestToken(QWindow &window, std::function<void(const QString &)> take) override
    {
        using Native = QNativeInterface::Private::QWaylandWindow;
        auto *native = window.nativeInterface<Native>();
        const auto *application = qGuiApp->nativeInterface<QNativeInterface::QWaylandApplication>();
        if (!native || !application || !window.isVisible())
            return;
        connect(native, &Native::xdgActivationTokenCreated, this, std::move(take), Qt::SingleShotConnection);
        native->requestXdgActivationToken(application->lastInputSerial());
    }
};

} // namespace

} // namespace kelo

#include "LayerShellPlugin.moc"
