#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace support {

/// A home of its own for this process and what it starts from then on. It comes before their session bus,
/// whose services would live in the home of the person who runs the tests otherwise. Removed with its last
/// content.
class HomeFolder final
{
public:
    HomeFolder();

    /// A path below the folder.
    QString path(const QString &relative) const { return m_folder.filePath(relative); }

    /// Writes a file with the folders above it; throws std::runtime_error when it can't.
    void write(const QString &relative, const QByteArray &content, bool isProgram = false) const;
    /// Empty when there is no such file.
    QByteArray read(const QString &relative) const;

    /// The folder of what the bus may start: the settings service that a panel needs, and nothing else.
    QString busServices() const;

private:
    QTemporaryDir m_folder;
};

} // namespace support
