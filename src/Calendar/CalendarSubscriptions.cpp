#include "Calendar/CalendarSubscriptions.h"

#include "Meetings/Url.h"

#include <QUrl>
#include <optional>

namespace mivora {

namespace {

/// The URL that `text` means. Letters beyond ASCII, which people can read but no host is asked with, are
/// escaped.
std::optional<Url> urlFrom(const std::string &text)
{
    const QString trimmed = QString::fromStdString(text).trimmed();
    auto url = Url::parse(trimmed.toStdString());
    return url ? url : Url::parse(QUrl(trimmed).toEncoded().toStdString());
}

bool isThisMachine(std::string_view host)
{
    return host == "localhost" || host == "[::1]" || host.starts_with("127.");
}

} // namespace

bool isCalendarLink(const QString &link)
{
    return link.startsWith(QLatin1String("webcal:"), Qt::CaseInsensitive) ||
           link.startsWith(QLatin1String("webcals:"), Qt::CaseInsensitive);
}

std::string hostOf(const std::string &text)
{
    return addressesToTry(text).empty() ? std::string() : std::string(*urlFrom(text)->host());
}

std::vector<std::string> addressesToTry(const std::string &text)
{
    const auto url = urlFrom(text);
    if (!url || !url->host())
        return {};
    const QString scheme = QString::fromUtf8(url->scheme().data(), qsizetype(url->scheme().size())).toLower();
    const std::string rest = url->text().substr(url->scheme().size());
    if (scheme == QLatin1String("https") || scheme == QLatin1String("webcals"))
        return {"https" + rest};
    if (scheme != QLatin1String("webcal") && scheme != QLatin1String("http"))
        return {};
    if (isThisMachine(*url->host()))
        return {"http" + rest};
    return {"https" + rest, "http" + rest};
}

} // namespace mivora
