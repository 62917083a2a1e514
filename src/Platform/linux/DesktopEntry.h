#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

typedef struct _GKeyFile GKeyFile;

namespace mivora {

/// The [Desktop Entry] group of a desktop file (freedesktop.org Desktop Entry Specification). Keys and
/// comments that nobody asks about are kept.
class DesktopEntry final
{
public:
    DesktopEntry();

    /// The entry in the file `path`; nothing when that can't be read or is no desktop file.
    static std::optional<DesktopEntry> read(const QString &path);

    std::optional<bool> boolean(const char *key) const;
    void setBoolean(const char *key, bool value);
    void setString(const char *key, const QString &value);
    bool contains(const char *key) const;
    void remove(const char *key);

    QByteArray text() const;

private:
    struct Free
    {
        void operator()(GKeyFile *file) const;
    };

    std::unique_ptr<GKeyFile, Free> m_file;
};

/// The Exec value that starts `program` without arguments, quoted by the rules of the Desktop Entry
/// Specification.
QString execLine(const QString &program);

} // namespace mivora
