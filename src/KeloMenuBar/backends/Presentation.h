#pragma once

#include "KeloMenuBar/StatusItemController.h"
#include "KeloMenuBar/StatusPicture.h"

#include <optional>

namespace kelo {

/// How a status item is shown, which depends on what its host can draw.
enum class Presentation {
    /// An icon by name and the title as a text of the host's.
    Label,
    /// Icon and title drawn into one wide picture.
    Wide,
    /// A square picture with the countdown in it.
    Square,
};

/// What is known about the program that shows status items.
struct StatusHost
{
    /// The name of the process that owns the watcher's bus name, as the kernel cuts it (15 bytes). Empty if
    /// unknown, which it is in a sandbox.
    QString process{};
    /// The same of those that draw what another program's watcher keeps: a bar beside sway's own.
    QStringList others{};
    /// The Ayatana indicator service is on the bus.
    bool hasAyatanaIndicator = false;
    /// $XDG_CURRENT_DESKTOP, the only hint within a sandbox.
    QString desktop{};

    friend bool operator==(const StatusHost &, const StatusHost &) = default;
};

/// The presentation that looks best in this host; a square for hosts that nothing is known of.
Presentation presentationFor(const StatusHost &host);

/// Whether the host opens the menu, in its own look, when an item refuses to be activated.
bool opensRefusedMenu(const StatusHost &host);

/// Whether the host reads titles and tool tips as Pango markup, though they are plain text.
bool readsMarkup(const StatusHost &host);

/// The user's own choice, $MIVORA_TRAY: label, wide or square. Nothing if unset or anything else.
std::optional<Presentation> presentationOverride();

/// What a StatusNotifierItem says about itself to one kind of host.
struct NotifierProperties
{
    QString title;
    QString status;
    QString iconName;
    QString iconThemePath;
    QString iconDescription;
    QString label;
    QString labelGuide;
    QString toolTip;
    /// Nothing for hosts that load the icon by name.
    std::optional<StatusPicture> picture;

    friend bool operator==(const NotifierProperties &, const NotifierProperties &) = default;
};

/// The properties that show this state in this way.
NotifierProperties notifierProperties(const StatusItemState &state, Presentation presentation);

} // namespace kelo
