#pragma once

#include "KeloMenuBar/Menu.h"

#include <QObject>
#include <QSize>
#include <QVariantList>

class QEvent;
class QKeyEvent;
class QWindow;

namespace kelo {

/// A menu as MenuView.qml shows it, and the item in it where keyboard and pointer are. Main thread only.
class MenuModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariantList items READ items NOTIFY itemsChanged)
    Q_PROPERTY(int current READ current WRITE point NOTIFY currentChanged)

public:
    enum class Stops {
        /// The arrow keys pass over what can't be chosen.
        atChoices,
        /// They stop at every text: what is there to be read is read to people who don't see it, too.
        atTexts,
    };

    explicit MenuModel(Stops stops) : m_stops(stops) {}

    /// Shows `menu` in place of the one before. The current item stays if it is still there.
    void setMenu(Menu menu);

    /// The size at which the view shows all of it, but not wider than is good.
    QSize size() const;

    /// For the view: title, shortcut, isEnabled, isStop and isSeparator of each item.
    const QVariantList &items() const { return m_items; }

    /// The index of the item that Return would choose; -1 for none.
    int current() const { return m_current; }

    void setCurrent(int index);

    /// Makes the first item that can be chosen the current one, wherever the pointer rests.
    void goToFirst();

    /// Makes the item under the pointer the current one. Keys scroll items below a pointer that rests: that
    /// doesn't count, until it moves.
    void point(int index)
    {
        if (!m_keyboardLeads)
            setCurrent(index);
    }

    /// Lets the pointer lead: it moves, or the menu has just come.
    void followPointer() { m_keyboardLeads = false; }

    /// Ends the menu and runs the item's action; does nothing where there is nothing to choose.
    Q_INVOKABLE void choose(int index);

    /// To be called with every event of the window that shows it. Keys do what they are for (arrows, Return,
    /// Escape, the items' own shortcuts) and go nowhere else: then it is true.
    bool filter(QWindow &window, QEvent &event);

Q_SIGNALS:
    void itemsChanged();
    void currentChanged();
    /// An item was chosen, or Escape pressed. The action comes afterwards.
    void ended();

private:
    void pressKey(const QKeyEvent &event);
    bool isStop(int index, Stops stops) const;
    int next(int index, int step, Stops stops) const;
    int afterPage(int step) const;
    int itemWithShortcut(const QKeyEvent &event) const;

    const Stops m_stops;
    Menu m_menu;
    QVariantList m_items;
    int m_current = -1;
    bool m_keyboardLeads = false;
};

} // namespace kelo
