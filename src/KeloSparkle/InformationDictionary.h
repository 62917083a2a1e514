#pragma once

#include <QJsonObject>
#include <QString>

namespace kelo {

/// What the program knows of its own build: a JSON object in a file that is installed with it. A development
/// build has no such file, and then every value is undefined.
class InformationDictionary final
{
public:
    InformationDictionary() = default;

    /// The object in \a path; empty when there is no such file, or no object in it.
    static InformationDictionary read(const QString &path);

    /// share/NAME/info.json beside the program's bin folder; NAME is the application's.
    static QString programPath();

    /// QJsonValue::Undefined when there is no such key.
    QJsonValue value(QLatin1String key) const { return m_object.value(key); }

private:
    QJsonObject m_object;
};

/// The key of the Ed25519 public key (base64) that packages of the program are signed for.
constexpr QLatin1String publicKeyKey("SUPublicEDKey");
/// The key of the appcast's address.
constexpr QLatin1String feedKey("SUFeedURL");

/// Whether updates are looked for in this build: \a publicKey is a text, and no placeholder ("REPLACE…").
bool startsUpdater(const QJsonValue &publicKey);

} // namespace kelo
