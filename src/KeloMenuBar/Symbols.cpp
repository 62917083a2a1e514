#include "KeloMenuBar/Symbols.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

// Outside of any namespace, as Qt wants it.
static void loadResources()
{
    Q_INIT_RESOURCE(icons);
}

namespace kelo {

namespace {

QString resourceFolder()
{
    static const bool loaded = (loadResources(), true);
    Q_UNUSED(loaded);
    return QStringLiteral(":/KeloMenuBar/icons/");
}

bool writeIcons(const QDir &folder)
{
    if (!folder.mkpath(QStringLiteral(".")))
        return false;
    const QDir resources(resourceFolder());
    for (const QString &name : resources.entryList({QStringLiteral("app.kelo.*.svg")})) {
        QFile file(folder.filePath(name));
        QFile resource(resources.filePath(name));
        if (!resource.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly) ||
            file.write(resource.readAll()) < 0)
            return false;
    }
    return true;
}

// Copies the icons to where a host, another process, can read them. Empty if that fails.
// Some hosts look for the file itself and some, as MATE's panel, for an icon of a theme.
QString writtenIcons()
{
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const QString folder = runtime + QStringLiteral("/app.kelo.Mivora/icons");
    const bool isWritten = !runtime.isEmpty() && writeIcons(QDir(folder)) &&
                           writeIcons(QDir(folder + QStringLiteral("/hicolor/scalable/status")));
    return isWritten ? folder : QString();
}

QString foundIconThemePath()
{
    const QString icon = QStringLiteral("/hicolor/scalable/status/app.kelo.Mivora-clock-symbolic.svg");
    const QString own =
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/icons"));
    if (QFile::exists(own + icon)) {
        const bool everywhere = own == QLatin1String("/usr/share/icons");
        return everywhere ? QString() : own;
    }
    return writtenIcons();
}

} // namespace

SymbolFiles symbolFiles(const QString &symbol)
{
    const QString files = symbol == QLatin1String("calendar.badge.exclamationmark")
                              ? QStringLiteral("app.kelo.Mivora-exclamation")
                              : QStringLiteral("app.kelo.Mivora-clock");
    return {.symbolic = files + QLatin1String("-symbolic"),
            .urgent = files + QLatin1String("-urgent"),
            .drawing = resourceFolder() + files + QLatin1String("-22.svg")};
}

QString iconThemePath()
{
    static const QString path = foundIconThemePath();
    return path;
}

} // namespace kelo
