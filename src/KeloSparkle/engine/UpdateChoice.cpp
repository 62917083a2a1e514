#include "KeloSparkle/engine/UpdateChoice.h"

#include "KeloSparkle/engine/NotesText.h"
#include "KeloSparkle/engine/Signature.h"
#include "KeloSparkle/engine/Version.h"

namespace kelo {

namespace {

constexpr qint64 largestPackage = 512 * 1024 * 1024;

struct Candidate
{
    Version version;
    const AppcastItem *item = nullptr;
};

bool isForEverybody(const AppcastItem &item)
{
    const bool isForLinux =
        item.os.isEmpty() || item.os.compare(QLatin1String("linux"), Qt::CaseInsensitive) == 0;
    return isForLinux && item.channel.isEmpty() && !item.url.isEmpty();
}

bool fitsSystem(const AppcastItem &item, const QString &systemVersion)
{
    const auto wanted = Version::parse(item.minimumSystemVersion);
    const auto system = Version::parse(systemVersion);
    return !wanted || !system || *wanted <= *system;
}

void keepNewer(std::optional<Candidate> &newest, const Version &version, const AppcastItem &item)
{
    if (!newest || newest->version < version)
        newest = Candidate{version, &item};
}

/// It stands in headings, so it is one line, and a short one.
QString lineOf(const QString &text)
{
    constexpr qsizetype longest = 40;
    return plainNotes(text.left(longest)).simplified();
}

QString nameOf(const AppcastItem &item)
{
    const QString name = lineOf(item.shortVersion);
    return name.isEmpty() ? lineOf(item.version) : name;
}

CheckOutcome offer(const AppcastItem &item)
{
    const Update update{.version = item.version,
                        .displayVersion = nameOf(item),
                        .notes = item.notes,
                        .url = QUrl(item.url, QUrl::StrictMode),
                        .length = item.length.toLongLong(),
                        .signature = decodeSignature(item.signature)};
    if (!isSecureAddress(update.url))
        return UpdateFailure{UpdateFault::insecure, item.url};
    if (update.signature.isEmpty())
        return UpdateFailure{UpdateFault::unsignedPackage, item.url};
    if (update.length <= 0 || update.length > largestPackage)
        return UpdateFailure{UpdateFault::malformedFeed, item.length};
    return update;
}

} // namespace

bool isSecureAddress(const QUrl &url)
{
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty() &&
           url.userInfo().isEmpty();
}

CheckOutcome chooseUpdate(const std::vector<AppcastItem> &items, const RunningProgram &running)
{
    std::optional<Candidate> newest;
    std::optional<Candidate> tooNew;
    for (const AppcastItem &item : items) {
        const auto version = Version::parse(item.version);
        if (version && isForEverybody(item))
            keepNewer(fitsSystem(item, running.systemVersion) ? newest : tooNew, *version, item);
    }
    const auto current = Version::parse(running.version);
    const auto isNews = [&](const auto &candidate) {
        return candidate && current && *current < candidate->version;
    };
    if (isNews(newest))
        return offer(*newest->item);
    return NoUpdate{.newest = newest ? nameOf(*newest->item) : QString(),
                    .needsNewerSystem = isNews(tooNew) ? nameOf(*tooNew->item) : QString()};
}

} // namespace kelo
