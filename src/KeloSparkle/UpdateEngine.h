#pragma once

#include <QString>
#include <QUrl>
#include <QtPlugin>
#include <functional>
#include <optional>
#include <variant>

namespace kelo {

/// Where a program's updates come from, and what is running.
struct UpdateFeed
{
    QUrl address;
    /// Base64 of the 32 bytes of an Ed25519 key (RFC 8032).
    QString publicKey;
    QString runningVersion;
};

/// A newer version as the feed offers it. Nothing of it is trusted but what the signature covers: the file.
struct Update
{
    /// What versions are compared by.
    QString version = {};
    /// What people call it.
    QString displayVersion = {};
    /// Plain text; may be empty.
    QString notes = {};
    QUrl url = {};
    /// In bytes.
    qint64 length = 0;
    /// 64 bytes, Ed25519, over the whole file.
    QByteArray signature = {};

    bool operator==(const Update &) const = default;
};

/// There is nothing newer.
struct NoUpdate
{
    /// The newest version of the feed for this system; empty when it has none.
    QString newest;
    /// A newer version that this system is too old for; empty when there is none.
    QString needsNewerSystem;

    bool operator==(const NoUpdate &) const = default;
};

enum class UpdateFault {
    /// The engine or a part of it is not installed.
    incomplete,
    /// The program's own key is none.
    unusableKey,
    unreachable,
    timedOut,
    /// The server answered, but with an error.
    refusedByServer,
    /// An address or a redirect that isn't https.
    insecure,
    /// The server couldn't prove who it is.
    untrustedServer,
    malformedFeed,
    feedTooLarge,
    /// The feed gives no signature for the file, or none of Ed25519.
    unsignedPackage,
    wrongLength,
    wrongSignature,
    /// The package is older than, or the same as, what is running.
    olderVersion,
    cannotSave,
    /// The verified file was there, but is no longer.
    vanished,
};

struct UpdateFailure
{
    UpdateFault fault = UpdateFault::incomplete;
    /// For the curious; not translated, may be empty.
    QString detail;
};

using CheckOutcome = std::variant<Update, NoUpdate, UpdateFailure>;
/// The path of the verified file.
using DownloadOutcome = std::variant<QString, UpdateFailure>;

/// Fetches, reads and verifies. Implemented by the plug-in mivora-updates, so that the program itself need
/// not link Qt Network; UpdateEngineLoader finds it. It does one thing at a time: a new request cancels the
/// one before. Callbacks come later on the main thread, and never after cancel().
class UpdateEngine
{
public:
    virtual ~UpdateEngine() = default;

    virtual void check(const UpdateFeed &feed, std::function<void(const CheckOutcome &)> done) = 0;

    /// Downloads into \a folder, which is made, and emptied of what earlier downloads left there.
    /// \a progress gets the number of bytes so far. A file that is refused is deleted.
    virtual void download(const Update &update, const UpdateFeed &feed, const QString &folder,
                          std::function<void(qint64)> progress,
                          std::function<void(const DownloadOutcome &)> done) = 0;

    virtual void cancel() = 0;
};

} // namespace kelo

Q_DECLARE_INTERFACE(kelo::UpdateEngine, "app.kelo.UpdateEngine/1")
