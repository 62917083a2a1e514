#pragma once

#include <QAccessible>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWindow>

namespace support {

/// A window as a person with a screen reader finds things in it, and with mouse and keyboard uses them.
class AccessibleView final
{
public:
    explicit AccessibleView(QWindow &window) : m_window(&window) {}

    /// The visible item with the role and the name; null when there is none.
    QAccessibleInterface *find(QAccessible::Role role, const QString &name) const;

    /// The names of all visible items with the role, from top to bottom.
    QStringList names(QAccessible::Role role) const;

    /// Whether the check box of this name is checked. A missing one counts as a failure.
    bool isChecked(const QString &name) const;

    /// Clicks in the middle of the item; false when there is none. `place` is a part of its width.
    bool click(QAccessible::Role role, const QString &name, double place = 0.5) const;

    /// Types the key into the window.
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;

    /// Waits until what was done to the window is drawn, and all of it has its place.
    void settle() const;

    /// The name of the item that has the keyboard.
    QString focused() const;

private:
    QList<QAccessibleInterface *> all() const;

    /// Null once a click has ended it.
    QPointer<QWindow> m_window;
};

} // namespace support
