#pragma once

#include <QString>
#include <array>
#include <optional>

namespace mivora {

/// The screen corner at which the Join panel appears.
enum class PanelCorner { topRight, topLeft, bottomRight, bottomLeft };

inline constexpr std::array allPanelCorners{PanelCorner::topRight, PanelCorner::topLeft,
                                            PanelCorner::bottomRight, PanelCorner::bottomLeft};

/// The stored name, such as "topRight".
QString rawValue(PanelCorner corner);

/// The corner with the stored name \a raw, or nothing.
std::optional<PanelCorner> panelCornerFromRawValue(const QString &raw);

} // namespace mivora
