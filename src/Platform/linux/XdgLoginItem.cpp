#include "Platform/linux/XdgLoginItem.h"

#include "Platform/linux/AtomicFile.h"
#include "Platform/linux/DesktopEntry.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>

namespace mivora {

namespace {

constexpr QLatin1String entryName("/autostart/app.kelo.Mivora.desktop");
constexpr char hiddenKey[] = "Hidden";
/// Written by the settings of GNOME, MATE and Cinnamon where a user switches an entry off.
constexpr char gnomeEnabledKey[] = "X-GNOME-Autostart-enabled";

bool startsAtLogin(const DesktopEntry &entry)
{
    return !entry.boolean(hiddenKey).value_or(false) && entry.boolean(gnomeEnabledKey).value_or(true);
}

void switchOn(DesktopEntry &entry)
{
    entry.remove(hiddenKey);
    if (entry.contains(gnomeEnabledKey))
        entry.setBoolean(gnomeEnabledKey, true);
}

void fillIn(DesktopEntry &entry, const QString &program)
{
    entry.setString("Type", QStringLiteral("Application"));
    if (!entry.contains("Name"))
        entry.setString("Name", QStringLiteral("Mivora"));
    if (!entry.contains("Icon"))
        entry.setString("Icon", QStringLiteral("app.kelo.Mivora"));
    entry.setString("Exec", execLine(program));
    // Without the program the entry is passed over: it stays behind when a package is removed.
    entry.setString("TryExec", program);
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

std::optional<QString> XdgLoginItem::systemFile() const
{
    for (const QString &folder : m_places.systemFolders) {
        const QString path = folder % entryName;
        if (QFileInfo::exists(path))
            return path;
    }
    return std::nullopt;
}

bool XdgLoginItem::isEnabled() const
{
    std::optional<QString> path = userFile();
    if (!QFileInfo::exists(*path))
        path = systemFile();
    const auto entry = path ? DesktopEntry::read(*path) : std::nullopt;
    return entry && startsAtLogin(*entry);
}

std::optional<QString> XdgLoginItem::setEnabled(bool enabled)
{
    std::optional<DesktopEntry> entry = DesktopEntry::read(userFile());
    const bool isOff = !entry && !systemFile();
    if (!enabled && isOff)
        return std::nullopt;
    if (!entry)
        entry = DesktopEntry();
    fillIn(*entry, m_places.program);
    if (enabled)
        switchOn(*entry);
    else
        entry->setBoolean(hiddenKey, true);
    return replaceFile(userFile(), entry->text());
}

} // namespace mivora
