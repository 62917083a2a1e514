#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/linux/FileWatch.h"
#include "Platform/linux/IniDocument.h"

namespace mivora {

/// The settings in one INI file that people and QSettings can read and write too.
///
/// A write reads the file anew under a lock, changes the one line, and replaces the file, so that processes
/// don't undo each other's changes. A file that can't be read is left alone.
class IniDefaultsStore final : public DefaultsStore
{
    Q_OBJECT

public:
    enum class Kind { standard, preview };

    /// Opens the file \a path; it is made, with its folder, by the first write.
    explicit IniDefaultsStore(const QString &path, Kind kind = Kind::standard, QObject *parent = nullptr);

    /// $XDG_CONFIG_HOME/mivora/mivora.conf
    static QString standardPath();

    bool isStandard() const override { return m_kind == Kind::standard; }

    QStringList keys() const override;
    std::optional<bool> boolean(const QString &key) const override;
    std::optional<qint64> integer(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    std::optional<QStringList> stringList(const QString &key) const override;
    std::optional<QByteArray> data(const QString &key) const override;

    void setBoolean(const QString &key, bool value) override;
    void setInteger(const QString &key, qint64 value) override;
    void setString(const QString &key, const QString &value) override;
    void setStringList(const QString &key, const QStringList &value) override;
    void setData(const QString &key, const QByteArray &value) override;
    void remove(const QString &key) override;

private:
    /// A value as it stands in the file; nothing for one that is to be removed.
    using RawValue = std::optional<QByteArray>;

    void write(const QString &key, const RawValue &value);
    std::optional<QString> save();
    void reload();
    IniDocument withUnsaved(const QByteArray &text) const;
    void adopt(IniDocument document);

    QString m_path;
    Kind m_kind;
    FileWatch m_watch;
    IniDocument m_document;
    /// What the file doesn't have yet, because it could not be written.
    QMap<QString, RawValue> m_unsaved;
    bool m_failureReported = false;
};

} // namespace mivora
