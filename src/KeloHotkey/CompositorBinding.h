#pragma once

#include "KeloHotkey/HotKeyCombo.h"

namespace kelo {

/// What a user can do where programs can have no shortcut: bind a command in the compositor.
struct CompositorBinding
{
    /// The compositor's configuration file, and the part of it where that matters. Empty for a compositor
    /// that isn't known.
    QString file;
    /// The line to put there; of an unknown compositor the command alone.
    QString line;
};

/// The binding of a key combination to `command`, a program and its arguments, for the compositor of the
/// session.
CompositorBinding compositorBinding(const HotKeyCombo &combo, const QString &command);

} // namespace kelo
