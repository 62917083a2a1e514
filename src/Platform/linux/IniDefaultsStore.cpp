#include "Platform/linux/IniDefaultsStore.h"

#include "Platform/linux/AtomicFile.h"
#include "Platform/linux/FileLock.h"
#include "Platform/linux/IniValue.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace mivora {

namespace {

QString lockPath(const QString &path)
{
    const QFileInfo file(path);
    return file.absolutePath() % QLatin1String("/.") % file.fileName() % QLatin1String(".lock");
}

template<typename Decode>
auto decoded(const IniDocument &document, const QString &key, Decode decode) -> decltype(decode(QByteArray()))
{
    const auto found = document.values().find(key);
    return found == document.values().end() ? std::nullopt : decode(*found);
}

} // namespace

IniDefaultsStore::IniDefaultsStore(const QString &path, Kind kind, QObject *parent)
    : DefaultsStore(parent), m_path(QFileInfo(path).absoluteFilePath()), m_kind(kind), m_watch(m_path)
{
    const auto content = readFile(m_path);
    if (const auto *text = std::get_if<QByteArray>(&content))
        m_document = IniDocument(*text);
    connect(&m_watch, &FileWatch::changed, this, &IniDefaultsStore::reload);
}

QString IniDefaultsStore::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) %
           QLatin1String("/mivora/mivora.conf");
}

QStringList IniDefaultsStore::keys() const
{
    return m_document.values().keys();
}

std::optional<bool> IniDefaultsStore::boolean(const QString &key) const
{
    return decoded(m_document, key, ini::decodeBoolean);
}

std::optional<qint64> IniDefaultsStore::integer(const QString &key) const
{
    return decoded(m_document, key, ini::decodeInteger);
}

std::optional<QString> IniDefaultsStore::string(const QString &key) const
{
    return decoded(m_document, key, ini::decodeString);
}

std::optional<QStringList> IniDefaultsStore::stringList(const QString &key) const
{
    return decoded(m_document, key, ini::decodeStringList);
}

std::optional<QByteArray> IniDefaultsStore::data(const QString &key) const
{
    return decoded(m_document, key, ini::decodeData);
}

void IniDefaultsStore::setBoolean(const QString &key, bool value)
{
    write(key, value ? "true" : "false");
}

void IniDefaultsStore::setInteger(const QString &key, qint64 value)
{
    write(key, QByteArray::number(value));
}

void IniDefaultsStore::setString(const QString &key, const QString &value)
{
    write(key, ini::encodeString(value));
}

void IniDefaultsStore::setStringList(const QString &key, const QStringList &value)
{
    write(key, ini::encodeStringList(value));
}

void IniDefaultsStore::setData(const QString &key, const QByteArray &value)
{
    write(key, ini::encodeData(value));
}

void IniDefaultsStore::remove(const QString &key)
{
    write(key, std::nullopt);
}

void IniDefaultsStore::write(const QString &key, const RawValue &value)
{
    m_unsaved.insert(key, value);
    m_document = withUnsaved(m_document.text());
    const auto failure = save();
    const bool isNews = failure && !m_failureReported;
    m_failureReported = failure.has_value();
    if (isNews)
        Q_EMIT writeFailed(*failure);
}

std::optional<QString> IniDefaultsStore::save()
{
    if (auto error = makeFolder(QFileInfo(m_path).absolutePath()))
        return error;
    const FileLock lock(lockPath(m_path));
    if (!lock.error().isEmpty())
        return m_path % QLatin1String(": ") % lock.error();

    const auto content = readFile(m_path);
    if (const auto *error = std::get_if<ReadError>(&content))
        return error->reason;
    const QByteArray before = std::get<QByteArray>(content);
    IniDocument document = withUnsaved(before);
    if (document.text() != before) {
        if (auto error = replaceFile(m_path, document.text()))
            return error;
    }
    m_unsaved.clear();
    adopt(std::move(document));
    return std::nullopt;
}

void IniDefaultsStore::reload()
{
    const auto content = readFile(m_path);
    if (const auto *text = std::get_if<QByteArray>(&content))
        adopt(withUnsaved(*text));
}

IniDocument IniDefaultsStore::withUnsaved(const QByteArray &text) const
{
    IniDocument document(text);
    for (auto entry = m_unsaved.begin(); entry != m_unsaved.end(); ++entry) {
        if (entry.value())
            document.setValue(entry.key(), **entry);
        else
            document.remove(entry.key());
    }
    return document;
}

/// Values that differ from the known ones can only be another process's: own ones are known before they are
/// written. They are announced from the event loop, for a setter's caller does not expect it.
void IniDefaultsStore::adopt(IniDocument document)
{
    const bool changed = document.values() != m_document.values();
    m_document = std::move(document);
    if (changed)
        QMetaObject::invokeMethod(this, &DefaultsStore::changedExternally, Qt::QueuedConnection);
}

} // namespace mivora
