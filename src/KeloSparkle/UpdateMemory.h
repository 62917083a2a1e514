#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace kelo {

/// What is remembered between runs: a small file in the user's state folder. What can't be written is
/// remembered until the program ends; the worst that comes of it is one check too many with each run.
class UpdateMemory final
{
public:
    explicit UpdateMemory(QString path) : m_path(std::move(path)) {}

    /// $XDG_STATE_HOME/NAME/updates.ini; NAME is the application's.
    static QString defaultPath();

    /// When updates were last looked for; invalid when never.
    QDateTime lastCheck() const;
    void setLastCheck(const QDateTime &time);

    /// The version that the user was last told of without having asked.
    QString announcedVersion() const;
    void setAnnouncedVersion(const QString &version);

private:
    QString m_path;
    /// Of this run, whether it could be written or not.
    std::optional<QDateTime> m_lastCheck;
    std::optional<QString> m_announced;
};

} // namespace kelo
