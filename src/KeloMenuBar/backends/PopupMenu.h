#pragma once

#include "KeloMenuBar/MenuModel.h"

#include <QObject>
#include <QPoint>
#include <QWindow>
#include <cstdint>
#include <memory>

namespace kelo {

class ViewLoader;

/// The menu in a window of our own, on X11, for trays that draw no menus; MenuView.qml draws it. Keyboard
/// and mouse are its own while it is open; a click elsewhere or Escape closes it. A menu that is higher than
/// the screen scrolls.
class PopupMenu final : public QObject
{
    Q_OBJECT

public:
    /// `views` outlives the menu; nothing is loaded before it is opened.
    explicit PopupMenu(ViewLoader &views);
    ~PopupMenu() override;

    /// Shows the menu beside this point of the screen, which is in device-independent pixels.
    void open(Menu menu, QPoint position);

    /// The window while the menu is open.
    QWindow *window() const { return m_window.get(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void grab(int attemptsLeft);
    void dismiss();
    bool press(QPoint position);
    bool drag(const QMouseEvent &event);
    bool release();

    ViewLoader &m_views;
    MenuModel m_model{MenuModel::Stops::atChoices};
    std::unique_ptr<QWindow> m_window;
    std::uint32_t m_previousFocus = 0;
    /// Whether a button went down since the menu is open; else one is held that opened it.
    bool m_wasPressed = false;
};

} // namespace kelo
