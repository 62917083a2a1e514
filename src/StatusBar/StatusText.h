#pragma once

#include "Meetings/CalendarInfo.h"
#include "Meetings/Meeting.h"

#include <QString>
#include <optional>

/// What the status item shows, as data. Pure functions.
namespace mivora {

/// Whether and how long the next meeting's title stands in the status item.
struct TitleOptions
{
    bool isShown = true;
    /// The greatest number of characters of the meeting's title.
    int width = 24;
};

/// The status item as it is to be shown.
struct StatusItemState
{
    /// Begins with the blank that parts it from the icon; empty when the icon stands alone.
    QString title;
    /// Whether the title is drawn in orange; never without a title.
    bool urgent = false;
    /// The name of the icon's symbol.
    QString icon;
    std::optional<QString> toolTip;

    friend bool operator==(const StatusItemState &, const StatusItemState &) = default;
};

/// "Design review · 2m": the shortened title of \a meeting and the time until it starts.
QString statusTitleText(const Meeting &meeting, int titleWidth, Timestamp now);

/// Whether \a meeting starts within a minute or is running.
bool isUrgent(const Meeting &meeting, Timestamp now);

/// The status item for the next meeting, if there is one.
StatusItemState statusItemState(const std::optional<Meeting> &next, const TitleOptions &options,
                                CalendarAuthorization authorization, Timestamp now);

} // namespace mivora
