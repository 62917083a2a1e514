#include "App/StatusMenuBuilder.h"

namespace mivora {

namespace {

std::function<void()> actionOf(const MenuEntry &entry, const StatusMenuActions &actions)
{
    if (entry.command == MenuCommand::none)
        return {};
    if (entry.meeting)
        return [join = actions.joinMeeting, meeting = *entry.meeting] { join(meeting); };
    return [perform = actions.perform, command = entry.command] { perform(command); };
}

} // namespace

void fillMenu(kelo::Menu &menu, const std::vector<MenuEntry> &entries, const StatusMenuActions &actions)
{
    for (const MenuEntry &entry : entries) {
        if (entry.separator)
            menu.addSeparator();
        else
            menu.addItem(entry.title, entry.keyEquivalent, actionOf(entry, actions)).isEnabled =
                entry.enabled;
    }
}

} // namespace mivora
