#pragma once

#include "Platform/linux/JsonDefaultsStore.h"

namespace mivora {

/// Remembers, outside of the preferences, that the user allowed Mivora to read calendars. Kept in a file, so
/// that another process can allow or forget it; this one notices.
class AccessMemory final : public QObject
{
    Q_OBJECT

public:
    /// What to go by: the remembered answer, or a permission that the user gave with this very start.
    enum class Permission { remembered, given };

    /// `path` is the file; see defaultPath().
    explicit AccessMemory(const QString &path = defaultPath(), Permission permission = Permission::remembered,
                          QObject *parent = nullptr);

    static QString defaultPath() { return JsonDefaultsStore::statePath(); }

    /// Known without looking at the file.
    bool isAllowed() const { return m_isAllowed; }

    /// Remembers the permission. Returns false when it can't be written; it then counts until the program
    /// ends.
    bool allow() { return remember(true); }

    /// Forgets the permission. Returns false when that can't be written.
    bool reset() { return remember(false); }

Q_SIGNALS:
    void changed();

private:
    bool remember(bool isAllowed);
    void update();

    JsonDefaultsStore m_state;
    Permission m_permission;
    bool m_isAllowed = false;
};

} // namespace mivora
