#pragma once

#include "KeloHotkey/HotKeyService.h"

#include <QPointer>
#include <functional>
#include <memory>

namespace kelo {

/// One registered global shortcut, from creation to destruction.
class HotKey final
{
public:
    using Action = std::function<void()>;

    /// Registers the combination. The action runs from the event loop after each press. Nothing when the
    /// service refused; the number of the registration is used up nevertheless.
    static std::unique_ptr<HotKey> create(HotKeyService &service, const HotKeyCombo &combo, Action action);

    /// Unregisters. A press that is still queued is ignored.
    ~HotKey();
    Q_DISABLE_COPY_MOVE(HotKey)

    /// 1, 2, 3, …: unique in the process.
    std::uint32_t id() const { return m_id; }

private:
    HotKey(HotKeyService &service, std::uint32_t id, Action action);

    QPointer<HotKeyService> m_service;
    std::uint32_t m_id = 0;
    /// Queued presses are addressed to this object and go with it.
    QObject m_receiver;
};

} // namespace kelo
