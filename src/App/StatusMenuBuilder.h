#pragma once

#include "KeloMenuBar/Menu.h"
#include "StatusBar/StatusMenu.h"

#include <functional>
#include <vector>

namespace mivora {

/// What choosing a menu entry does; joinMeeting is given the entry's meeting.
struct StatusMenuActions
{
    std::function<void(const Meeting &)> joinMeeting;
    /// Every other command.
    std::function<void(MenuCommand)> perform;
};

/// Turns the menu's entries into items of the status item's menu.
void fillMenu(kelo::Menu &menu, const std::vector<MenuEntry> &entries, const StatusMenuActions &actions);

} // namespace mivora
