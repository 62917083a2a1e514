#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace mivora {

/// Tells that a file may have changed: written, replaced, created or removed. Neither the file nor its folder
/// need to exist. May tell too often, as when something else in the folder changed; a burst is told once.
class FileWatch final : public QObject
{
    Q_OBJECT

public:
    explicit FileWatch(const QString &path, QObject *parent = nullptr);

Q_SIGNALS:
    void changed();

private:
    void watchAgain();
    QStringList pathsToWatch() const;

    QString m_path;
    QFileSystemWatcher m_watcher;
    QTimer m_burst;
};

} // namespace mivora
