#pragma once

#include "KeloMenuBar/Menu.h"

#include <vector>

class QObject;

namespace kelo {

/// The actions that every window understands in its own way.
enum class StandardAction {
    Terminate,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    SelectAll,
    PerformClose,
};

/// An item of the main menu. The action of a separator means nothing.
struct MainMenuItem : MenuItem
{
    StandardAction action = StandardAction::Terminate;
};

/// The application's main menu as data. Windows take their shortcuts from it; no menu bar is drawn.
struct MainMenu
{
    /// One menu of the bar.
    struct Section
    {
        QString title;
        std::vector<MainMenuItem> items;
    };

    std::vector<Section> sections;

    /// The menus of the application with this name: its own, Edit and Window.
    static MainMenu build(const QString &applicationName);

    /// Makes the key equivalents work in all windows of the program, as long as `owner` lives. What is about
    /// text is left to text fields, which know it by themselves.
    void install(QObject &owner) const;
};

} // namespace kelo
