#include "MeetingTexts/ServiceName.h"

#include <QCoreApplication>

namespace mivora {

QString serviceName(Service service)
{
    if (service == Service::other)
        return QCoreApplication::translate("Service", "Link", "a meeting's link to a service without a name");
    const std::string_view name = displayName(service);
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

} // namespace mivora
