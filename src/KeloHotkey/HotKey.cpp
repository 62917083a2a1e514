#include "KeloHotkey/HotKey.h"

#include <limits>
#include <utility>

namespace kelo {

namespace {

std::uint32_t takeIdentifier()
{
    static std::uint32_t next = 1;
    if (next == std::numeric_limits<std::uint32_t>::max())
        qFatal("no identifier is left for a hot key");
    return next++;
}

} // namespace

std::unique_ptr<HotKey> HotKey::create(HotKeyService &service, const HotKeyCombo &combo, Action action)
{
    const std::uint32_t id = takeIdentifier();
    if (!service.registerHotKey(combo, id))
        return nullptr;
    return std::unique_ptr<HotKey>(new HotKey(service, id, std::move(action)));
}

HotKey::HotKey(HotKeyService &service, std::uint32_t id, Action action) : m_service(&service), m_id(id)
{
    // The action belongs to the connection, which outlives a call that releases this object.
    const auto run = [id, action = std::move(action)](std::uint32_t pressedId) {
        if (pressedId == id)
            action();
    };
    QObject::connect(&service, &HotKeyService::pressed, &m_receiver, run, Qt::QueuedConnection);
}

HotKey::~HotKey()
{
    if (m_service)
        m_service->unregisterHotKey(m_id);
}

} // namespace kelo
