#pragma once

#include "KeloMenuBar/Menu.h"
#include "KeloMenuBar/backends/MenuScroll.h"

#include <QRasterWindow>
#include <QTimer>
#include <vector>

namespace kelo {

/// The menu in a window of our own, on X11, for trays that draw no menus. Keyboard and mouse are its own
/// while it is open; a click elsewhere or Escape closes it. A menu that is higher than the screen is
/// scrolled: by the keyboard, the wheel, or the pointer on an arrow at its end.
class PopupMenu final : public QRasterWindow
{
    Q_OBJECT

public:
    PopupMenu();

    /// Shows the menu beside this point of the screen, which is in device-independent pixels.
    void open(Menu menu, QPoint position);

    /// The index of the item that Return would choose; -1 for none.
    int current() const { return m_current; }

    /// Where an item is drawn within the window, or would be if it were high enough.
    QRect itemRect(int index) const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void exposeEvent(QExposeEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QSize layOut(int tallest);
    void grab(int attemptsLeft);
    void dismiss();
    void choose(int index);
    void chooseByKey(const QKeySequence &keys);
    void setCurrent(int index);
    void move(int step);
    void moveFrom(int index, int step);
    void scrollBy(int pixels);
    int itemAt(QPoint position) const;
    bool canChoose(int index) const;
    void drawItem(QPainter &painter, int index) const;
    void drawArrow(QPainter &painter, int direction) const;

    Menu m_menu;
    /// Where the items are in the whole menu.
    std::vector<QRect> m_rects;
    MenuScroll m_scroll;
    /// Runs while the pointer is on an arrow.
    QTimer m_scrolling;
    int m_direction = 0;
    int m_current = -1;
    // A release belongs to the press that opened the menu until the pointer has moved within it.
    bool m_hasMoved = false;
};

} // namespace kelo
