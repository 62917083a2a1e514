#pragma once

#include "KeloMenuBar/Menu.h"

#include <QObject>
#include <QPoint>
#include <QSize>
#include <QVariantList>
#include <QWindow>
#include <cstdint>
#include <memory>

namespace kelo {

class ViewLoader;

/// The menu in a window of our own, on X11, for trays that draw no menus; PopupMenu.qml draws it. Keyboard
/// and mouse are its own while it is open; a click elsewhere or Escape closes it. A menu that is higher than
/// the screen scrolls.
class PopupMenu final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList items READ items CONSTANT)
    Q_PROPERTY(int current READ current WRITE point NOTIFY currentChanged)

public:
    /// `views` outlives the menu; nothing is loaded before it is opened.
    explicit PopupMenu(ViewLoader &views) : m_views(views) {}

    ~PopupMenu() override;

    /// Shows the menu beside this point of the screen, which is in device-independent pixels.
    void open(Menu menu, QPoint position);

    /// The window while the menu is open.
    QWindow *window() const { return m_window.get(); }

    /// For the view: title, shortcut, isEnabled and isSeparator of each item.
    QVariantList items() const;

    /// The index of the item that Return would choose; -1 for none.
    int current() const { return m_current; }

    void setCurrent(int index);

    /// Makes the item under the pointer the current one. Keys scroll items below a pointer that rests: that
    /// doesn't count, until it moves.
    void point(int index)
    {
        if (!m_keyboardLeads)
            setCurrent(index);
    }

    /// Closes the menu and runs the item's action.
    Q_INVOKABLE void choose(int index);

Q_SIGNALS:
    void currentChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QSize measure() const;
    void grab(int attemptsLeft);
    void dismiss();
    bool press(QPoint position);
    bool drag(const QMouseEvent &event);
    bool release();
    bool pressKey(const QKeyEvent &event);
    void moveFrom(int index, int step);
    int itemWithShortcut(const QKeyEvent &event) const;

    ViewLoader &m_views;
    Menu m_menu;
    std::unique_ptr<QWindow> m_window;
    std::uint32_t m_previousFocus = 0;
    int m_current = -1;
    /// Whether a button went down since the menu is open; else one is held that opened it.
    bool m_wasPressed = false;
    bool m_keyboardLeads = false;
};

} // namespace kelo
