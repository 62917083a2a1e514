#pragma once

#include "Meetings/Meeting.h"

#include <QString>
#include <optional>

/// What the Join panel says, as data. Pure functions.
namespace mivora {

/// The panel's texts and colour for a meeting; all empty without one.
struct PanelText
{
    /// The meeting's title in one line.
    QString title;
    /// "Starts in 5m", "Starting now" or "Started 3m ago".
    QString timeText;
    bool hasStarted = false;
    /// The service of the join link, such as "Zoom"; nothing without a link.
    std::optional<QString> serviceName;
    /// The calendar's colour; without one the view takes the desktop's accent colour.
    std::optional<Color> accentColor;

    friend bool operator==(const PanelText &, const PanelText &) = default;
};

/// The line that tells when a meeting starts or started. Coming minutes are rounded up and past ones down, so
/// that the line never promises more time than there is.
QString panelTimeText(Timestamp start, Timestamp now);

PanelText panelText(const std::optional<Meeting> &meeting, Timestamp now);

} // namespace mivora
