#pragma once

#include <QDateTime>
#include <QString>

namespace kelo {

/// One release, to be written into an appcast.
struct Release
{
    QString version;
    /// The oldest GNU C library that the package runs with; may be empty.
    QString minimumSystem;
    /// Plain text; may be empty.
    QString notes;
    QString url;
    qint64 length = 0;
    /// Base64.
    QString signature;
    QDateTime published;
};

/// The "item" element, indented to stand in a channel.
QString appcastItem(const Release &release);

/// A whole appcast around \a items.
QString appcast(const QString &title, const QString &items);

} // namespace kelo
