#pragma once

#include "Platform/DefaultsStore.h"
#include "Platform/linux/FileWatch.h"

#include <QMap>
#include <optional>

namespace mivora {

/// A JSON object in a file that people and several processes may change at the same time.
///
/// A write reads the file anew under a lock, changes the one value and replaces the file, so that processes
/// don't undo each other's changes. A file that is no JSON object is never overwritten: it is set aside under
/// another name before the first write.
class JsonDefaultsStore final : public DefaultsStore
{
    Q_OBJECT

public:
    /// Opens the file `path`; it is made, with its folder, by the first write.
    explicit JsonDefaultsStore(const QString &path = settingsPath());

    /// The settings: `$XDG_CONFIG_HOME/mivora/mivora.json`.
    static QString settingsPath();

    /// What is no setting and is not to be copied between machines: `$XDG_STATE_HOME/mivora/state.json`.
    static QString statePath();

    bool isStandard() const override { return true; }

    const QJsonObject &values() const override { return m_values; }

    void setValue(const QString &key, const QJsonValue &value) override;

    /// Whether everything that was set is on disk.
    bool isSaved() const { return m_unsaved.isEmpty(); }

private:
    std::optional<QString> save();
    void reload();
    QJsonObject withUnsaved(QJsonObject values) const;
    void adopt(const QJsonObject &values);

    QString m_path;
    FileWatch m_watch;
    QJsonObject m_values;
    /// What the file doesn't have yet, because it could not be written; undefined where a key is to be
    /// removed.
    QMap<QString, QJsonValue> m_unsaved;
    bool m_hasToldFailure = false;
};

} // namespace mivora
