#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace kelo {

/// One release of an appcast, as written there; absent values are empty.
struct AppcastItem
{
    QString version;
    QString shortVersion;
    QString minimumSystemVersion;
    /// The operating system that it is for.
    QString os;
    /// Items of a channel are for those who asked for it, which nobody can here.
    QString channel;
    /// Plain text.
    QString notes;
    QString url;
    QString length;
    /// Base64.
    QString signature;

    bool operator==(const AppcastItem &) const = default;
};

/// Reads an appcast: RSS 2.0 with the elements of the namespace "sparkle". Nothing when it isn't
/// well-formed, isn't RSS, declares a document type (and with it entities), or is larger or deeper than any
/// honest feed.
std::optional<std::vector<AppcastItem>> parseAppcast(const QByteArray &xml);

} // namespace kelo
