#pragma once

#include "KeloHotkey/HotKeyCombo.h"

#include <QObject>
#include <cstdint>

namespace kelo {

/// What registers global shortcuts with the desktop. Main thread only.
class HotKeyService : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether shortcuts can be registered here at all. While they can't, nothing is to be attempted: a
    /// refusal would say nothing about a conflict.
    virtual bool canRegister() const = 0;

    /// Registers the combination under a number that is unique in the process. False when it is taken, by
    /// another program or in this one, or names no key. Where the desktop asks the user, true at once.
    virtual bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) = 0;

    /// Does nothing for an unknown number.
    virtual void unregisterHotKey(std::uint32_t id) = 0;

    /// Until resume() no registered combination fires, and its keys reach the focused window where the
    /// desktop allows: a recorder can record them. Registrations are kept, new ones can be made.
    virtual void suspend() = 0;
    virtual void resume() = 0;

Q_SIGNALS:
    /// The combination registered under the number was pressed. Once for each press, however long it is held.
    void pressed(std::uint32_t id);

    /// canRegister() gives another answer than before.
    void availabilityChanged();
};

} // namespace kelo
