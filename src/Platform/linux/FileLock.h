#pragma once

#include <QString>
#include <chrono>

namespace mivora {

/// A lock between processes, held until destroyed. The kernel lets go of it when its holder dies (flock(2)),
/// so no lock is ever left behind; the empty lock file is.
class FileLock
{
public:
    /// Waits until \a path is locked, for a short \a patience at most: holders only write one small file.
    explicit FileLock(const QString &path,
                      std::chrono::milliseconds patience = std::chrono::milliseconds(1000));
    ~FileLock();
    Q_DISABLE_COPY_MOVE(FileLock)

    /// Empty when the lock is held; otherwise why not.
    const QString &error() const { return m_error; }

private:
    int m_file = -1;
    QString m_error;
};

} // namespace mivora
