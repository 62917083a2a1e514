#include "KeloMenuBar/MainMenu.h"

#include <QGuiApplication>
#include <QShortcut>
#include <QWindow>

namespace kelo {

namespace {

// A window without a frame has nothing to be closed by: it goes by itself.
void closeActiveWindow()
{
    QWindow *window = QGuiApplication::focusWindow();
    if (window && !window->flags().testFlag(Qt::FramelessWindowHint))
        window->close();
}

void (*functionOf(StandardAction action))()
{
    switch (action) {
    case StandardAction::Terminate:
        return &QCoreApplication::quit;
    case StandardAction::PerformClose:
        return &closeActiveWindow;
    default:
        return nullptr;
    }
}

MainMenuItem item(const QString &title, QChar key, StandardAction action,
                  KeyModifiers modifiers = KeyModifiers::Command)
{
    return {{.title = title, .keyEquivalent = key, .modifiers = modifiers}, action};
}

MainMenuItem separator()
{
    return {{.isSeparator = true}};
}

} // namespace

MainMenu MainMenu::build(const QString &applicationName)
{
    using enum StandardAction;
    return {{
        {applicationName, {item(QStringLiteral("Quit ") + applicationName, u'q', Terminate)}},
        {QStringLiteral("Edit"),
         {
             item(QStringLiteral("Undo"), u'z', Undo),
             item(QStringLiteral("Redo"), u'z', Redo, KeyModifiers::CommandShift),
             separator(),
             item(QStringLiteral("Cut"), u'x', Cut),
             item(QStringLiteral("Copy"), u'c', Copy),
             item(QStringLiteral("Paste"), u'v', Paste),
             item(QStringLiteral("Select All"), u'a', SelectAll),
         }},
        {QStringLiteral("Window"), {item(QStringLiteral("Close"), u'w', PerformClose)}},
    }};
}

void MainMenu::install(QObject &owner) const
{
    for (const Section &section : sections) {
        for (const MainMenuItem &item : section.items) {
            const auto function = item.isSeparator ? nullptr : functionOf(item.action);
            if (!function)
                continue;
            auto *shortcut = new QShortcut(item.shortcut(), &owner);
            shortcut->setContext(Qt::ApplicationShortcut);
            // Afterwards: the window is still busy with the key.
            QObject::connect(shortcut, &QShortcut::activated, &owner, function, Qt::QueuedConnection);
        }
    }
}

} // namespace kelo
