#include "Platform/linux/JsonDefaultsStore.h"

#include "Platform/linux/AtomicFile.h"

#include <QDir>
#include <QJsonDocument>
#include <QLockFile>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QThread>

namespace mivora {

namespace {

Q_LOGGING_CATEGORY(log, "mivora.settings")

/// The object in the file, empty when there is no file; nothing when it can't be read as one. Only regular
/// files are read, others could block, and only those of a size that settings can have.
std::optional<QJsonObject> readObject(const QString &path)
{
    constexpr qint64 longest = 4 << 20;
    const QFileInfo info(path);
    if (!info.exists())
        return QJsonObject();
    QFile file(path);
    if (!info.isFile() || info.size() > longest || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray text = file.readAll();
    if (file.error() != QFile::NoError)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isObject() && !text.trimmed().isEmpty())
        return std::nullopt;
    return document.object();
}

/// Returns what went wrong.
std::optional<QString> lockedOrError(QLockFile &lock)
{
    constexpr int tries = 200;
    constexpr unsigned long pause = 5; // milliseconds: holders only write one small file
    for (int i = 0; !lock.tryLock(0); ++i) {
        if (lock.error() != QLockFile::LockFailedError)
            return qt_error_string();
        if (i == tries)
            return QStringLiteral("locked by another process");
        QThread::msleep(pause);
    }
    return std::nullopt;
}

/// Returns what went wrong.
std::optional<QString> setAside(const QString &path)
{
    const QString name = path % QLatin1String(".unreadable");
    QString aside = name;
    for (int i = 2; QFileInfo::exists(aside); ++i)
        aside = name % QLatin1Char('-') % QString::number(i);
    QFile file(path);
    if (!file.rename(aside))
        return path % QLatin1String(": ") % file.errorString();
    qCWarning(log).noquote() << path << "can't be read as a JSON object; it is kept as" << aside;
    return std::nullopt;
}

} // namespace

JsonDefaultsStore::JsonDefaultsStore(const QString &path)
    : m_path(QFileInfo(path).absoluteFilePath()), m_watch(m_path),
      m_values(readObject(m_path).value_or(QJsonObject()))
{
    connect(&m_watch, &FileWatch::changed, this, &JsonDefaultsStore::reload);
}

QString JsonDefaultsStore::settingsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) %
           QLatin1String("/mivora/mivora.json");
}

QString JsonDefaultsStore::statePath()
{
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    // A relative path is to be ignored (XDG base directories).
    if (!QDir::isAbsolutePath(folder))
        folder = QDir::homePath() % QLatin1String("/.local/state");
    return folder % QLatin1String("/mivora/state.json");
}

void JsonDefaultsStore::setValue(const QString &key, const QJsonValue &value)
{
    m_unsaved.insert(key, value);
    m_values = withUnsaved(m_values);
    const auto failure = save();
    const bool isNews = failure && !m_hasToldFailure;
    m_hasToldFailure = failure.has_value();
    if (isNews)
        Q_EMIT writeFailed(*failure);
}

std::optional<QString> JsonDefaultsStore::save()
{
    const QFileInfo file(m_path);
    if (auto error = makeFolder(file.absolutePath()))
        return error;
    QLockFile lock(file.absolutePath() % QLatin1String("/.") % file.fileName() % QLatin1String(".lock"));
    if (auto error = lockedOrError(lock))
        return m_path % QLatin1String(": ") % *error;

    const auto stored = readObject(m_path);
    if (!stored) {
        if (auto error = setAside(m_path))
            return error;
    }
    const QJsonObject values = withUnsaved(stored.value_or(m_values));
    if (stored != values) {
        if (auto error = replaceFile(m_path, QJsonDocument(values).toJson()))
            return error;
    }
    m_unsaved.clear();
    adopt(values);
    return std::nullopt;
}

/// What is in the middle of an edit and can't be read changes nothing.
void JsonDefaultsStore::reload()
{
    if (const auto stored = readObject(m_path))
        adopt(withUnsaved(*stored));
}

QJsonObject JsonDefaultsStore::withUnsaved(QJsonObject values) const
{
    for (auto entry = m_unsaved.begin(); entry != m_unsaved.end(); ++entry)
        values.insert(entry.key(), entry.value());
    return values;
}

/// Values that differ from the known ones can only be another process's: own ones are known before they are
/// written. They are announced from the event loop, for a setter's caller does not expect it.
void JsonDefaultsStore::adopt(const QJsonObject &values)
{
    if (values == m_values)
        return;
    m_values = values;
    QMetaObject::invokeMethod(this, &DefaultsStore::changedExternally, Qt::QueuedConnection);
}

} // namespace mivora
