#pragma once

#include "CalendarEds/DesktopCalendars.h"

#include <QObject>

namespace mivora {

/// The plug-in's object.
class EdsPlugin final : public QObject, public DesktopCalendarsPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.kelo.DesktopCalendars/1")
    Q_INTERFACES(mivora::DesktopCalendarsPlugin)

public:
    std::unique_ptr<DesktopCalendars> make() override;
};

} // namespace mivora
