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

struct Symbol
{
    QLatin1String name;
    QLatin1String files;
};

constexpr Symbol symbols[] = {
    {QLatin1String("calendar.badge.clock"), QLatin1String("app.kelo.Mivora-clock")},
    {QLatin1String("calendar.badge.exclamationmark"), QLatin1String("app.kelo.Mivora-exclamation")},
};

QString resourceFolder()
{
    static const bool loaded = (loadResources(), true);
    Q_UNUSED(loaded);
    return QStringLiteral(":/KeloMenuBar/icons/");
}

// Copies the icons to where a host, another process, can read them. Empty if that fails.
QString writtenIcons()
{
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    const QDir folder(runtime + QStringLiteral("/app.kelo.Mivora/icons"));
    if (runtime.isEmpty() || !folder.mkpath(QStringLiteral(".")))
        return {};
    const QDir resources(resourceFolder());
    for (const QString &name : resources.entryList({QStringLiteral("app.kelo.*.svg")})) {
        QFile file(folder.filePath(name));
        QFile resource(resources.filePath(name));
        if (!resource.open(QIODevice::ReadOnly) || !file.open(QIODevice::WriteOnly) ||
            file.write(resource.readAll()) < 0)
            return {};
    }
    return folder.path();
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
    const Symbol *found = symbols;
    for (const Symbol &entry : symbols) {
        if (symbol == entry.name)
            found = &entry;
    }
    return {.symbolic = found->files + QLatin1String("-symbolic"),
            .urgent = found->files + QLatin1String("-urgent"),
            .drawing = resourceFolder() + found->files + QLatin1String("-22.svg")};
}

QString iconThemePath()
{
    static const QString path = foundIconThemePath();
    return path;
}

} // namespace kelo
