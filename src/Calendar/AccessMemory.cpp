#include "Calendar/AccessMemory.h"

namespace mivora {

namespace {

constexpr QLatin1String allowedKey("calendarAccess");

} // namespace

AccessMemory::AccessMemory(const QString &path, Permission permission, QObject *parent)
    : QObject(parent), m_state(path), m_permission(permission)
{
    update();
    connect(&m_state, &DefaultsStore::changedExternally, this, &AccessMemory::update);
}

bool AccessMemory::remember(bool isAllowed)
{
    if (m_permission == Permission::given)
        return true;
    m_state.setValue(allowedKey, isAllowed ? QJsonValue(true) : QJsonValue(QJsonValue::Undefined));
    update();
    return m_state.isSaved();
}

void AccessMemory::update()
{
    const bool isAllowed = m_permission == Permission::given || m_state.value(allowedKey).toBool();
    if (isAllowed == m_isAllowed)
        return;
    m_isAllowed = isAllowed;
    Q_EMIT changed();
}

} // namespace mivora
