#pragma once

#include "KeloHotkey/HotKeyCombo.h"
#include "KeloHotkey/HotKeyState.h"

#include <QObject>
#include <cstdint>

namespace kelo {

/// What registers global shortcuts with the desktop. Main thread only.
class HotKeyService : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Registers the combination under a number that is unique in the process. False when it is taken, by
    /// another program or in this one, or names no key. Where the desktop answers later, or programs can have
    /// no shortcut, true at once: state() has the rest. Where the desktop gives a program one shortcut alone,
    /// it takes the place of the one before.
    virtual bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) = 0;

    /// Does nothing for an unknown number.
    virtual void unregisterHotKey(std::uint32_t id) = 0;

    /// Until resume() no registered combination fires, and its keys reach the focused window where the
    /// desktop allows: a recorder can record them. Registrations are kept, new ones can be made.
    virtual void suspend() = 0;
    virtual void resume() = 0;

    /// How it stands with the combination registered last, or with the service when none is registered.
    virtual HotKeyState state() const = 0;

    /// Tries again to get what somebody else had, or the keyboard has lost. To be called when there is reason
    /// to hope: after sleep, or when the user looks.
    virtual void retry() {}

    /// Opens the desktop's own dialog for the keys; only where state() has it.
    virtual void configure() {}

Q_SIGNALS:
    /// The combination registered under the number was pressed. Once for each press, however long it is held.
    void pressed(std::uint32_t id);

    /// state() gives another answer than before.
    void stateChanged();
};

} // namespace kelo
