#include "CalendarEds/plugin/EdsPlugin.h"

#include "CalendarEds/plugin/EdsDesktop.h"

namespace mivora {

std::unique_ptr<DesktopCalendars> EdsPlugin::make()
{
    return std::make_unique<EdsDesktop>();
}

} // namespace mivora
