#pragma once

#include <QAccessible>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <gtest/gtest.h>

namespace support {

/// A window as a person with a screen reader finds things in it, and with mouse and keyboard uses them.
class AccessibleView final
{
public:
    explicit AccessibleView(QWindow &window) : m_window(&window) {}

    /// The visible item with the role and the name; null when there is none.
    QAccessibleInterface *find(QAccessible::Role role, const QString &name) const
    {
        for (QAccessibleInterface *item : all()) {
            if (hasRole(item, role) && item->text(QAccessible::Name) == name)
                return item;
        }
        return nullptr;
    }

    /// The names of all visible items with the role, from top to bottom.
    QStringList names(QAccessible::Role role) const
    {
        QList<QAccessibleInterface *> items = all();
        items.removeIf([role](QAccessibleInterface *item) { return !hasRole(item, role); });
        std::ranges::stable_sort(items, {}, [](QAccessibleInterface *item) { return item->rect().top(); });
        QStringList names;
        for (QAccessibleInterface *item : items)
            names.append(item->text(QAccessible::Name));
        return names;
    }

    /// Whether the check box of this name is checked. A missing one counts as a failure.
    bool isChecked(const QString &name) const
    {
        QAccessibleInterface *item = find(QAccessible::CheckBox, name);
        EXPECT_TRUE(item) << name.toStdString();
        return item && item->state().checked;
    }

    /// Clicks in the middle of the item; false when there is none. `place` is a part of its width.
    bool click(QAccessible::Role role, const QString &name, double place = 0.5) const
    {
        QAccessibleInterface *item = find(role, name);
        if (!item)
            return false;
        const QRect rect = item->rect().translated(-m_window->position());
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          {rect.left() + int(rect.width() * place), rect.center().y()});
        settle();
        return true;
    }

    /// Types the key into the window.
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(m_window, key, modifiers);
    }

    /// Waits until what was done to the window is drawn, and all of it has its place.
    void settle() const
    {
        if (!m_window)
            return;
        // By their names: they are QQuickWindow's, which tests don't link.
        QSignalSpy drawn(m_window, SIGNAL(frameSwapped()));
        QMetaObject::invokeMethod(m_window, "update");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !m_window || !m_window->isExposed() || !drawn.isEmpty(); }));
    }

    /// The name of the item that has the keyboard.
    QString focused() const
    {
        for (const QAccessibleInterface *item : all()) {
            if (item->state().focused && item->state().focusable)
                return item->text(QAccessible::Name);
        }
        return {};
    }

private:
    QList<QAccessibleInterface *> all() const
    {
        QList<QAccessibleInterface *> found;
        collect(QAccessible::queryAccessibleInterface(m_window), found);
        return found;
    }

    // To Qt 6.4 a button is no link, whatever it says.
    static bool hasRole(const QAccessibleInterface *item, QAccessible::Role role)
    {
        return item->role() == role || (item->role() == QAccessible::Link && role == QAccessible::PushButton);
    }

    static void collect(QAccessibleInterface *from, QList<QAccessibleInterface *> &found)
    {
        if (!from || from->state().invisible)
            return;
        found.append(from);
        for (int i = 0; i < from->childCount(); ++i)
            collect(from->child(i), found);
    }

    /// Null once a click has ended it.
    QPointer<QWindow> m_window;
};

} // namespace support
