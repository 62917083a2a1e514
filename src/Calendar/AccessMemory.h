#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>

namespace mivora {

/// Remembers, outside of the preferences, that the user allowed Mivora to read calendars. A small file, so
/// that another process can allow or forget it; this one notices.
class AccessMemory final : public QObject
{
    Q_OBJECT

public:
    /// What to go by: the remembered answer, or a permission that the user gave with this very start.
    enum class Permission { remembered, given };

    /// \a path is the file; see defaultPath(). Its folder is made when it is missing.
    explicit AccessMemory(const QString &path = defaultPath(), Permission permission = Permission::remembered,
                          QObject *parent = nullptr);

    /// $XDG_STATE_HOME/mivora/access, or ~/.local/state/mivora/access (XDG base directories).
    static QString defaultPath();

    /// Known without looking at the file.
    bool isAllowed() const { return m_isAllowed; }

    /// Remembers the permission. Returns false when it can't be written; it then counts until the program
    /// ends.
    bool allow();

    /// Forgets the permission. Returns false when the file can't be removed.
    bool reset();

Q_SIGNALS:
    void changed();

private:
    void readFile();
    void setAllowed(bool isAllowed);

    QString m_path;
    Permission m_permission;
    bool m_isAllowed = false;
    QFileSystemWatcher m_watcher;
};

} // namespace mivora
