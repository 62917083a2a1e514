#include "KeloSparkle/InformationDictionary.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>

namespace kelo {

InformationDictionary InformationDictionary::read(const QString &path)
{
    constexpr qint64 longest = 64 * 1024;
    InformationDictionary dictionary;
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        dictionary.m_object = QJsonDocument::fromJson(file.read(longest)).object();
    return dictionary;
}

QString InformationDictionary::programPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../share/") +
           QCoreApplication::applicationName() + QStringLiteral("/info.json");
}

bool startsUpdater(const QJsonValue &publicKey)
{
    const QString key = publicKey.toString();
    return !key.isEmpty() && !key.startsWith(QLatin1String("REPLACE"));
}

} // namespace kelo
