#include "KeloPanel/FloatingPanelController.h"

#include "Platform/linux/X11Connection.h"

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

// The program whose window is active, as EWMH has it; nothing where the desktop doesn't tell.
std::optional<RunningApp> frontmostApp()
{
    if (!mivora::X11Connection::isAvailable())
        return {};
    const mivora::X11Connection x11;
    const auto active = x11.values(x11.root(), "_NET_ACTIVE_WINDOW");
    if (active.empty() || active.front() == XCB_WINDOW_NONE)
        return {};
    const auto process = x11.values(active.front(), "_NET_WM_PID");
    // WM_CLASS is two strings, each ended by a zero byte: instance and class.
    const QList<QByteArray> names = x11.text(active.front(), XCB_ATOM_WM_CLASS).split('\0');
    return RunningApp{process.empty() ? 0 : process.front(), QString::fromLatin1(names.value(1))};
}

} // namespace

FloatingPanelController::FloatingPanelController(ViewLoader &views, PanelContent content)
    : m_panel(views, std::move(content))
{
    m_panel.keyHandler = [this](const QKeyEvent &event) {
        requireMainThread();
        return keyHandler && keyHandler(event);
    };
    m_panel.onResignKey = [this] {
        requireMainThread();
        if (hidesOnResignKey)
            hide();
    };
    m_releaseTimer.setSingleShot(true);
    connect(&m_releaseTimer, &QTimer::timeout, &m_panel, &FloatingPanel::releaseView);
    // Once for changes that come together.
    m_screensSettle.setSingleShot(true);
    connect(&m_screensSettle, &QTimer::timeout, this, &FloatingPanelController::stayOnScreen);
    startWhenScreensChange(m_screensSettle);
}

void FloatingPanelController::show()
{
    prepareToShow();
    if (const auto area = areaAt(QCursor::pos()))
        m_panel.setOrigin(centredOrigin(*area, m_panel.frameSize()));
    m_panel.makeKeyAndOrderFront();
}

void FloatingPanelController::show(const QRect &rect)
{
    prepareToShow();
    if (const auto area = areaTouching(rect))
        m_panel.setOrigin(originNear(rect, *area, m_panel.frameSize()));
    m_panel.makeKeyAndOrderFront();
}

bool FloatingPanelController::orderFrontRegardless(const PanelPlace &place, const std::optional<QRectF> &area)
{
    m_releaseTimer.stop();
    m_isWanted = true;
    m_panel.setPlace(place);
    if (area)
        m_panel.setOrigin(originAt(place, *area, m_panel.frameSize()));
    return m_panel.orderFrontRegardless();
}

void FloatingPanelController::hide()
{
    m_isWanted = false;
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
    m_isWanted = true;
    m_panel.setPlace({});
    m_previousApp = frontmostApp();
    if (m_previousApp && m_previousApp->processID == QCoreApplication::applicationPid())
        m_previousApp.reset();
    if (onWillShow)
        onWillShow();
}

// A panel on a screen that has gone, or become smaller, moves no further than it must. A compositor that
// places it may close it with its screen, or leave it there unseen: so there it appears anew.
void FloatingPanelController::stayOnScreen()
{
    if (m_isWanted && panelPlatform() == PanelPlatform::layers) {
        m_panel.orderOut();
        m_panel.orderFrontRegardless();
        return;
    }
    if (!isVisible())
        return;
    const QRect frame = m_panel.window()->geometry();
    if (const auto area = areaTouching(frame))
        m_panel.setOrigin(originInside(frame.topLeft(), *area, frame.size()));
}

} // namespace kelo
