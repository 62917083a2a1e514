#pragma once

#include "Preferences/PanelCorner.h"

#include <QString>

namespace mivora {

/// "When it starts", "1 minute before", "5 minutes before".
QString leadMinutesText(int minutes);

/// "Top right"
QString panelCornerText(PanelCorner corner);

/// "24 characters"
QString titleWidthText(int characters);

} // namespace mivora
