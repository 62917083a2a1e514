#pragma once

#include "KeloMenuBar/MenuItem.h"

#include <QString>
#include <vector>

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

    friend bool operator==(const MainMenuItem &, const MainMenuItem &) = default;
};

/// The application's main menu as data. Windows take their shortcuts from it; no menu bar is drawn.
struct MainMenu
{
    /// One menu of the bar.
    struct Section
    {
        QString title;
        std::vector<MainMenuItem> items;

        friend bool operator==(const Section &, const Section &) = default;
    };

    std::vector<Section> sections;

    /// The menus of the application with this name: its own, Edit and Window.
    static MainMenu build(const QString &applicationName);
};

} // namespace kelo
