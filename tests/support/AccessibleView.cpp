#include "support/AccessibleView.h"

#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <gtest/gtest.h>

namespace support {

namespace {

void collect(QAccessibleInterface *from, QList<QAccessibleInterface *> &found)
{
    if (!from || from->state().invisible)
        return;
    found.append(from);
    for (int i = 0; i < from->childCount(); ++i)
        collect(from->child(i), found);
}

} // namespace

QList<QAccessibleInterface *> AccessibleView::all() const
{
    QList<QAccessibleInterface *> found;
    collect(QAccessible::queryAccessibleInterface(m_window), found);
    return found;
}

QAccessibleInterface *AccessibleView::find(QAccessible::Role role, const QString &name) const
{
    for (QAccessibleInterface *item : all()) {
        if (item->role() == role && item->text(QAccessible::Name) == name)
            return item;
    }
    return nullptr;
}

QStringList AccessibleView::names(QAccessible::Role role) const
{
    QList<QAccessibleInterface *> items = all();
    items.removeIf([role](QAccessibleInterface *item) { return item->role() != role; });
    std::ranges::stable_sort(items, {}, [](QAccessibleInterface *item) { return item->rect().top(); });
    QStringList names;
    for (QAccessibleInterface *item : items)
        names.append(item->text(QAccessible::Name));
    return names;
}

bool AccessibleView::isChecked(const QString &name) const
{
    QAccessibleInterface *item = find(QAccessible::CheckBox, name);
    EXPECT_TRUE(item) << name.toStdString();
    return item && item->state().checked;
}

bool AccessibleView::click(QAccessible::Role role, const QString &name, double place) const
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

void AccessibleView::type(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(m_window, key, modifiers);
}

void AccessibleView::settle() const
{
    if (!m_window)
        return;
    // By their names: they are QQuickWindow's, which tests don't link.
    QSignalSpy drawn(m_window, SIGNAL(frameSwapped()));
    QMetaObject::invokeMethod(m_window, "update");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_window || !m_window->isExposed() || !drawn.isEmpty(); }));
}

QString AccessibleView::focused() const
{
    const auto *item = QAccessible::queryAccessibleInterface(m_window->focusObject());
    if (item && item->state().focusable)
        return item->text(QAccessible::Name);
    // Of what has a name the keyboard may be in a nameless part.
    for (QAccessibleInterface *other : all()) {
        if (other->state().focused && other->state().focusable)
            return other->text(QAccessible::Name);
    }
    return {};
}

} // namespace support
