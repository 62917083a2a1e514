#pragma once

#include "KeloMenuBar/Presentation.h"
#include "KeloMenuBar/StatusItem.h"
#include "KeloMenuBar/StatusPicture.h"

#include <optional>

namespace kelo {

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
