#pragma once

#include <QDate>
#include <QString>
#include <QUrl>
#include <QtPlugin>
#include <functional>
#include <variant>

namespace kelo {

/// Where a program's updates are announced, and what is running.
struct UpdateFeed
{
    /// Of the document; its signature is beside it, with ".sig" behind its name.
    QUrl address;
    /// Base64 of the 32 bytes of an Ed25519 key (RFC 8032).
    QString publicKey;
    QString runningVersion;
};

/// A version that is newer than the running one. All of it is the publisher's word: it was signed.
struct Update
{
    QString version;
    /// Of its release.
    QDate date;
    /// Plain text; may be empty.
    QString notes;
    /// The https address of the page to get it from.
    QString page;
};

/// The running version is the newest.
struct NoUpdate
{
};

enum class UpdateFault {
    /// The plug-in or a part of it is not installed.
    incomplete,
    /// The address or the key that the program was built with can't be used.
    unusableFeed,
    unreachable,
    /// The server couldn't prove who it is.
    untrustedServer,
    /// The server answered with an error, with another address, or with more than a feed can be.
    refusedByServer,
    /// The publisher didn't sign what the server sent.
    notGenuine,
    /// The publisher signed what is no feed.
    malformedFeed,
};

using CheckOutcome = std::variant<NoUpdate, Update, UpdateFault>;

/// Fetches the feed, verifies its signature and only then reads it. Implemented by the plug-in
/// mivora-updates, so that the program itself need not link Qt Network. A new check ends the one before.
class UpdateChecker
{
public:
    using Done = std::function<void(const CheckOutcome &)>;

    virtual ~UpdateChecker() = default;

    /// `done` is called later on the main thread, once, and never after cancel().
    virtual void check(const UpdateFeed &feed, Done done) = 0;
    virtual void cancel() = 0;
};

} // namespace kelo

Q_DECLARE_INTERFACE(kelo::UpdateChecker, "app.kelo.UpdateChecker/1")
