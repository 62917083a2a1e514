#include "Platform/linux/XdgLoginItem.h"

#include "Platform/linux/AtomicFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <memory>

// GLib uses "signals" as a name.
#undef signals
#include <glib.h>

namespace mivora {

namespace {

constexpr QLatin1String entryName("/autostart/app.kelo.Mivora.desktop");
constexpr char group[] = "Desktop Entry";
constexpr char hiddenKey[] = "Hidden";
/// Written by the settings of GNOME, MATE and Cinnamon where a user switches an entry off.
constexpr char gnomeEnabledKey[] = "X-GNOME-Autostart-enabled";

struct Unref
{
    void operator()(GKeyFile *file) const { g_key_file_unref(file); }
};

using DesktopFile = std::unique_ptr<GKeyFile, Unref>;
using Text = std::unique_ptr<gchar, decltype(&g_free)>;

/// The file `path` with the keys and comments that nobody here asks about. Null when it can't be read or is
/// no desktop file.
DesktopFile read(const QString &path)
{
    DesktopFile file(g_key_file_new());
    const auto flags = GKeyFileFlags(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    if (!g_key_file_load_from_file(file.get(), QFile::encodeName(path).constData(), flags, nullptr) ||
        !g_key_file_has_group(file.get(), group))
        file.reset();
    return file;
}

bool contains(GKeyFile *file, const char *key)
{
    return g_key_file_has_key(file, group, key, nullptr);
}

/// `fallback` stands for a value that is missing or no boolean.
bool boolean(GKeyFile *file, const char *key, bool fallback)
{
    GError *error = nullptr;
    const bool value = g_key_file_get_boolean(file, group, key, &error);
    const bool isThere = !error;
    g_clear_error(&error);
    return isThere ? value : fallback;
}

void setString(GKeyFile *file, const char *key, const QString &value)
{
    g_key_file_set_string(file, group, key, value.toUtf8().constData());
}

/// The path of `program` in an Exec value, quoted by the rules of the Desktop Entry
/// Specification.
QString execPath(const QString &program)
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
    const bool isPlain = quoted == program && std::ranges::none_of(program, [](QChar character) {
                             return QLatin1String(" \t\n'><~|&;*?#()").contains(character);
                         });
    return isPlain ? program : QLatin1Char('"') % quoted % QLatin1Char('"');
}

/// By itself, or as a unit of systemd's: that is known at the login.
QString commandLine(const QString &program)
{
    return execPath(program) % QLatin1String(" --at-login");
}

void fillIn(GKeyFile *file, const QString &program)
{
    setString(file, "Type", QStringLiteral("Application"));
    if (!contains(file, "Name"))
        setString(file, "Name", QStringLiteral("Mivora"));
    if (!contains(file, "Icon"))
        setString(file, "Icon", QStringLiteral("app.kelo.Mivora"));
    setString(file, "Exec", commandLine(program));
    // Without the program the entry is passed over: it stays behind when a package is removed.
    setString(file, "TryExec", program);
}

void switchTo(GKeyFile *file, bool enabled)
{
    if (!enabled)
        return g_key_file_set_boolean(file, group, hiddenKey, true);
    g_key_file_remove_key(file, group, hiddenKey, nullptr);
    if (contains(file, gnomeEnabledKey))
        g_key_file_set_boolean(file, group, gnomeEnabledKey, true);
}

std::optional<QString> write(GKeyFile *file, const QString &path)
{
    gsize length = 0;
    const Text text(g_key_file_to_data(file, &length, nullptr), g_free);
    return replaceFile(path, QByteArray(text.get(), qsizetype(length)));
}

} // namespace

XdgLoginItem::Places XdgLoginItem::Places::ofThisProcess()
{
    QStringList configFolders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    const QString userFolder = configFolders.takeFirst();
    // An AppImage runs from a folder that is gone after it quits; the variable names what stays.
    const QString image = qEnvironmentVariable("APPIMAGE");
    const QString program = image.isEmpty() ? QCoreApplication::applicationFilePath() : image;
    return {userFolder, configFolders, program};
}

QString XdgLoginItem::userFile() const
{
    return m_places.userFolder % entryName;
}

QString XdgLoginItem::systemFile() const
{
    for (const QString &folder : m_places.systemFolders) {
        QString path = folder % entryName;
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

bool XdgLoginItem::isEnabled() const
{
    const DesktopFile file = read(QFileInfo::exists(userFile()) ? userFile() : systemFile());
    return file && !boolean(file.get(), hiddenKey, false) && boolean(file.get(), gnomeEnabledKey, true);
}

std::optional<QString> XdgLoginItem::setEnabled(bool enabled)
{
    DesktopFile file = read(userFile());
    if (!file) {
        if (!enabled && systemFile().isEmpty())
            return std::nullopt;
        file.reset(g_key_file_new());
    }
    fillIn(file.get(), m_places.program);
    switchTo(file.get(), enabled);
    return write(file.get(), userFile());
}

void XdgLoginItem::renew()
{
    const DesktopFile file = read(userFile());
    if (!file)
        return;
    const Text line(g_key_file_get_string(file.get(), group, "Exec", nullptr), g_free);
    if (execPath(m_places.program) != QString::fromUtf8(line.get()))
        return;
    setString(file.get(), "Exec", commandLine(m_places.program));
    write(file.get(), userFile());
}

} // namespace mivora
