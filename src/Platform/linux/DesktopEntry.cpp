#include "Platform/linux/DesktopEntry.h"

#include <QFile>
#include <algorithm>

// GIO uses "signals" as a name.
#undef signals
#include <glib.h>

namespace mivora {

namespace {
constexpr char group[] = "Desktop Entry";
}

void DesktopEntry::Free::operator()(GKeyFile *file) const
{
    g_key_file_unref(file);
}

DesktopEntry::DesktopEntry() : m_file(g_key_file_new()) {}

std::optional<DesktopEntry> DesktopEntry::read(const QString &path)
{
    DesktopEntry entry;
    const auto flags = GKeyFileFlags(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    const QByteArray name = QFile::encodeName(path);
    if (!g_key_file_load_from_file(entry.m_file.get(), name.constData(), flags, nullptr) ||
        !g_key_file_has_group(entry.m_file.get(), group))
        return std::nullopt;
    return entry;
}

std::optional<bool> DesktopEntry::boolean(const char *key) const
{
    GError *error = nullptr;
    const bool value = g_key_file_get_boolean(m_file.get(), group, key, &error);
    if (!error)
        return value;
    g_error_free(error);
    return std::nullopt;
}

void DesktopEntry::setBoolean(const char *key, bool value)
{
    g_key_file_set_boolean(m_file.get(), group, key, value);
}

void DesktopEntry::setString(const char *key, const QString &value)
{
    g_key_file_set_string(m_file.get(), group, key, value.toUtf8().constData());
}

bool DesktopEntry::contains(const char *key) const
{
    return g_key_file_has_key(m_file.get(), group, key, nullptr);
}

void DesktopEntry::remove(const char *key)
{
    g_key_file_remove_key(m_file.get(), group, key, nullptr);
}

QByteArray DesktopEntry::text() const
{
    gsize length = 0;
    gchar *data = g_key_file_to_data(m_file.get(), &length, nullptr);
    QByteArray text(data, qsizetype(length));
    g_free(data);
    return text;
}

QString execLine(const QString &program)
{
    QString quoted;
    for (const QChar character : program) {
        if (QLatin1String("\"`$\\").contains(character))
            quoted += QLatin1Char('\\');
        quoted += character;
        // A single percent sign would begin a field code, inside quotes too.
        if (character == QLatin1Char('%'))
            quoted += character;
    }
    const bool isPlain = quoted == program && !program.isEmpty() &&
                         std::none_of(program.begin(), program.end(), [](QChar character) {
                             return QLatin1String(" \t\n'><~|&;*?#()").contains(character);
                         });
    return isPlain ? program : QLatin1Char('"') % quoted % QLatin1Char('"');
}

} // namespace mivora
