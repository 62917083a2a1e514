#include "KeloMenuBar/MainMenu.h"

namespace kelo {

namespace {

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

} // namespace kelo
