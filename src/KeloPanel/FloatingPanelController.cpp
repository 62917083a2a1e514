#include "KeloPanel/FloatingPanelController.h"

#include "KeloPanel/backends/PanelBackend.h"

#include <QCoreApplication>
#include <QCursor>
#include <QThread>
#include <chrono>

namespace kelo {

namespace {

// Long enough that a busy hour of meetings doesn't make the view again and again.
constexpr std::chrono::minutes releaseAfter{10};

/// In release builds as well: from another thread, nothing that follows can be right.
void requireMainThread()
{
    if (QThread::currentThread() != qApp->thread())
        qFatal("KeloPanel: panels belong to the main thread");
}

} // namespace

FloatingPanelController::FloatingPanelController(ViewLoader &views, PanelContent content)
    : m_panel(views, std::move(content))
{
    m_panel.keyHandler = [this](const KeyEvent &event) {
        requireMainThread();
        return keyHandler && keyHandler(event);
    };
    m_panel.onResignKey = [this] {
        requireMainThread();
        resignKey();
    };
    m_releaseTimer.setSingleShot(true);
    connect(&m_releaseTimer, &QTimer::timeout, &m_panel, &FloatingPanel::releaseView);
    connect(&m_screens, &ScreenWatcher::changed, this, &FloatingPanelController::stayOnScreen);
}

void FloatingPanelController::show()
{
    prepareToShow();
    const auto screens = currentScreens();
    const auto main = mainScreen();
    if (const auto *screen = screenContaining(screens, main ? &*main : nullptr, QCursor::pos()))
        m_panel.setOrigin(centredOrigin(screen->visibleFrame, m_panel.frameSize()));
    m_panel.makeKeyAndOrderFront();
}

void FloatingPanelController::show(const QRect &rect)
{
    prepareToShow();
    const auto screens = currentScreens();
    const auto main = mainScreen();
    if (const auto *screen = screenIntersecting(screens, main ? &*main : nullptr, rect))
        m_panel.setOrigin(originNear(rect, screen->visibleFrame, m_panel.frameSize()));
    m_panel.makeKeyAndOrderFront();
}

bool FloatingPanelController::orderFrontRegardless(const std::optional<QPointF> &origin)
{
    m_releaseTimer.stop();
    if (origin)
        m_panel.setOrigin(*origin);
    return m_panel.orderFrontRegardless();
}

void FloatingPanelController::hide()
{
    if (!isVisible())
        return;
    m_panel.orderOut();
    m_releaseTimer.start(releaseAfter);
    if (onDidHide)
        onDidHide();
}

void FloatingPanelController::toggle()
{
    isVisible() ? hide() : show();
}

void FloatingPanelController::prepareToShow()
{
    m_releaseTimer.stop();
    m_previousApp = frontmostApp();
    if (m_previousApp && m_previousApp->processID == QCoreApplication::applicationPid())
        m_previousApp.reset();
    if (onWillShow)
        onWillShow();
}

// A panel on a screen that has gone, or become smaller, moves no further than it must.
void FloatingPanelController::stayOnScreen()
{
    if (!isVisible())
        return;
    const auto screens = currentScreens();
    const auto main = mainScreen();
    const QRect frame = m_panel.window()->geometry();
    if (const auto *screen = screenIntersecting(screens, main ? &*main : nullptr, frame))
        m_panel.setOrigin(originInside(frame.topLeft(), screen->visibleFrame, frame.size()));
}

void FloatingPanelController::resignKey()
{
    if (hidesOnResignKey)
        hide();
}

} // namespace kelo
