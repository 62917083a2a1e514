#pragma once

#include <QLatin1String>
#include <algorithm>
#include <array>
#include <optional>

namespace mivora {

/// The screen corner at which the Join panel appears.
enum class PanelCorner { topRight, topLeft, bottomRight, bottomLeft };

inline constexpr std::array allPanelCorners{PanelCorner::topRight, PanelCorner::topLeft,
                                            PanelCorner::bottomRight, PanelCorner::bottomLeft};

/// The stored name, such as "topRight".
constexpr QLatin1String rawValue(PanelCorner corner)
{
    constexpr std::array names{QLatin1String("topRight"), QLatin1String("topLeft"),
                               QLatin1String("bottomRight"), QLatin1String("bottomLeft")};
    static_assert(names.size() == allPanelCorners.size());
    return names[std::size_t(corner)];
}

/// The corner with the stored name `raw`, or nothing.
inline std::optional<PanelCorner> panelCornerFromRawValue(const QString &raw)
{
    const auto found =
        std::ranges::find_if(allPanelCorners, [&](PanelCorner corner) { return rawValue(corner) == raw; });
    return found == allPanelCorners.end() ? std::nullopt : std::optional(*found);
}

} // namespace mivora
