#pragma once

#include "KeloPanel/PanelSurface.h"
#include "KeloPanel/Screens.h"
#include "KeloTheme/ViewHost.h"

#include <QObject>
#include <QWindow>
#include <functional>
#include <memory>
#include <optional>

class QKeyEvent;

namespace kelo {

class PanelBackend;
class ViewLoader;

/// How panels come to be seen.
enum class PanelPlatform {
    /// A window that the window manager leaves alone.
    x11,
    /// A surface that the Wayland compositor places.
    layers,
    /// A frameless window that the desktop places.
    window,
    /// No window at all: the desktop's notifications.
    notification,
};

/// The platform's way: windows on X11 and XWayland; on Wayland layers where the compositor has them, else
/// notifications, since a client can't place its windows there. MIVORA_PANEL=window|notification overrules.
PanelPlatform panelPlatform();

/// What a panel shows and how large it is, in logical pixels.
struct PanelContent
{
    QString module;
    QString component;
    QVariantMap properties{};
    QSize size;
    /// GlassSurface::panelCornerRadius() when absent.
    std::optional<double> cornerRadius{};
    QString title{};
    /// A panel that is only looked at lets clicks through.
    bool takesInput = true;
};

/// A borderless window above all others, on every workspace, that never activates the application.
///
/// The window is made when the panel is first ordered front, and kept until releaseView().
class FloatingPanel final : public QObject
{
    Q_OBJECT

public:
    FloatingPanel(ViewLoader &views, PanelContent content);
    ~FloatingPanel() override;

    /// Asked first about every key that goes down; true means that it was handled and goes nowhere else. Only
    /// keys that are meant for the panel: it is active, and was pressed or given the keyboard since it
    /// appeared.
    std::function<bool(const QKeyEvent &)> keyHandler;
    /// Called after the panel has lost the keyboard.
    std::function<void()> onResignKey;

    bool isVisible() const;
    bool isKey() const;
    /// Whether the focused text field has text that an input method is still composing.
    bool isComposing() const;

    /// The size of the window, with the room for the shadow.
    QSize frameSize();

    /// Takes effect at once when the panel is visible.
    void setOrigin(const QPointF &origin);

    /// Where compositors put it that place panels themselves, when it is next ordered front.
    void setPlace(const PanelPlace &place) { m_place = place; }

    /// Of a hidden panel.
    void setContentSize(const QSize &size) { m_content.size = size; }

    /// Shows the panel and gives it the keyboard. False when the view can't be shown.
    bool makeKeyAndOrderFront();
    /// Shows the panel; the keyboard stays where it is. False when the view can't be shown.
    bool orderFrontRegardless();
    void orderOut();

    /// Deletes the window of a hidden panel; the next showing makes it anew.
    void releaseView();

    /// Null before the first showing.
    QWindow *window() const { return m_window.get(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Keyboard { keep, take };

    bool orderFront(Keyboard keyboard);
    bool prepareWindow();
    void announce();
    void measure();

    ViewLoader &m_views;
    PanelContent m_content;
    PanelSurface m_surface;
    std::unique_ptr<PanelBackend> m_backend;
    /// Since it appeared, the user has turned to the panel.
    bool m_isAddressed = false;
    std::unique_ptr<QWindow> m_window;
    QPoint m_origin;
    PanelPlace m_place;
};

} // namespace kelo
