#pragma once

#include "KeloTheme/ViewHost.h"

#include <QObject>
#include <QPoint>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <memory>
#include <optional>

namespace kelo {

class ViewLoader;

enum class Attention {
    /// The user asked for the window: it comes to the front and takes the keyboard.
    taken,
    /// It comes by itself: the keyboard stays where it is.
    left,
};

/// A window with the desktop's frame that comes and goes. It is made when it is first shown, in the middle of
/// the screen, and deleted some time after it was closed; the next one has its place. Main thread only.
///
/// Not to be deleted while its view is at work, which may be what closed it: use deleteLater() there. What
/// the view shows must outlive this.
class ViewWindow final : public QObject
{
    Q_OBJECT

public:
    /// Loads nothing before the first show(). `keptClosed` is how long a closed window is kept.
    ViewWindow(ViewLoader &views, ViewSpec spec, std::chrono::milliseconds keptClosed = {},
               QObject *parent = nullptr);
    ~ViewWindow() override;

    /// Shows the window. False when it can't be made.
    bool show(Attention attention = Attention::taken);

    /// Hides the window, without closed().
    void close();

    void setTitle(const QString &title);

    /// Of a window whose size is fixed.
    void setSize(const QSize &size);

    bool isVisible() const { return m_window && m_window->isVisible(); }

    /// Null while there is none.
    QWindow *window() const { return m_window.get(); }

Q_SIGNALS:
    /// The user closes the window. Not emitted when the program quits, which closes all windows.
    void closed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool make();
    void fit();
    void interrupt(QWindow *other);
    void release();

    ViewLoader &m_views;
    ViewSpec m_spec;
    QTimer m_unused;
    /// Where the last window was.
    std::optional<QPoint> m_position;
    /// The size that the text wants.
    QSize m_wanted;
    bool m_isQuitting = false;
    std::unique_ptr<QWindow> m_window;
};

} // namespace kelo
