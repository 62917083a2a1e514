#include "CalendarEds/EdsPlugin.h"

#include "CalendarEds/EdsDesktop.h"

namespace mivora {

std::unique_ptr<DesktopCalendars> EdsPlugin::make()
{
    return std::make_unique<EdsDesktop>();
}

} // namespace mivora
