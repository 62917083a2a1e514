#include "Platform/linux/PortalLoginItem.h"

#include "Platform/SystemLog.h"
#include "Platform/linux/PortalRequest.h"
#include "Platform/linux/XdgLoginItem.h"

#include <QFile>

namespace mivora {

namespace {

const QString backgroundInterface = QStringLiteral("org.freedesktop.portal.Background");

} // namespace

std::optional<QString> PortalLoginItem::setEnabled(bool enabled)
{
    findPortal(m_bus, backgroundInterface, this, [this, enabled](std::optional<uint> version) {
        if (version)
            request(enabled);
        else
            answered(false, enabled);
    });
    return std::nullopt;
}

void PortalLoginItem::request(bool enabled)
{
    auto *request = new PortalRequest(m_bus, this);
    connect(request, &PortalRequest::answered, this,
            [this, enabled](uint answer, const QVariantMap &results) {
                answered(answer == PortalRequest::done &&
                             results.value(QStringLiteral("autostart")).toBool() == enabled,
                         enabled);
            });
    const QVariantMap options{
        {QStringLiteral("handle_token"), request->token()},
        {QStringLiteral("reason"), tr("Mivora counts down to your next meeting from the moment you log in.")},
        {QStringLiteral("autostart"), enabled},
        {QStringLiteral("commandline"), QStringList{QStringLiteral("mivora")}},
    };
    QDBusMessage call = portalCall(portalPath, backgroundInterface, QStringLiteral("RequestBackground"));
    call << QString() << options;
    request->send(call);
}

void PortalLoginItem::answered(bool asWanted, bool enabled)
{
    const auto error = asWanted ? m_memory->setEnabled(enabled)
                                : QStringLiteral("the desktop portal refused it, or there is none");
    if (error)
        writeToSystemLog(QLatin1String("Mivora: launch at login change failed: ") + *error);
}

std::unique_ptr<LoginItem> makeLoginItem()
{
    auto entry = std::make_unique<XdgLoginItem>(XdgLoginItem::Places::ofThisProcess());
    if (!QFile::exists(QStringLiteral("/.flatpak-info"))) {
        entry->renew();
        return entry;
    }
    return std::make_unique<PortalLoginItem>(std::move(entry), QDBusConnection::sessionBus());
}

} // namespace mivora
