#include "Preferences/PanelCorner.h"

#include <QLatin1String>
#include <algorithm>

namespace mivora {

namespace {

/// In the order of the enumeration.
constexpr std::array rawValues{QLatin1String("topRight"), QLatin1String("topLeft"),
                               QLatin1String("bottomRight"), QLatin1String("bottomLeft")};
static_assert(rawValues.size() == allPanelCorners.size());

} // namespace

QString rawValue(PanelCorner corner)
{
    return rawValues[static_cast<std::size_t>(corner)];
}

std::optional<PanelCorner> panelCornerFromRawValue(const QString &raw)
{
    const auto found = std::find(rawValues.begin(), rawValues.end(), raw);
    if (found == rawValues.end())
        return std::nullopt;
    return allPanelCorners[static_cast<std::size_t>(found - rawValues.begin())];
}

} // namespace mivora
