#pragma once

#include "Meetings/CalendarInfo.h"
#include "Meetings/Meeting.h"

#include <QString>
#include <optional>

namespace mivora {

/// Whether and how long the next meeting's title stands in the status item.
struct TitleOptions
{
    bool isShown = true;
    /// The greatest number of characters of the meeting's title.
    int width = 24;
    /// Whether the name of the meeting's service stands in its place.
    bool isDiscreet = false;
};

/// What the status item shows.
struct StatusText
{
    /// Begins with the blank that parts it from the icon; empty when the icon stands alone.
    QString title;
    /// Whether the title is drawn in orange; never without a title.
    bool urgent = false;
    /// The name of the icon's symbol.
    QString icon;
    std::optional<QString> toolTip;

    friend bool operator==(const StatusText &, const StatusText &) = default;
};

/// The status item for the next meeting, if there is one. Urgent is a meeting that starts within a minute or
/// is running. `isNothingToRead` is as `EventSource` has it.
StatusText statusText(const std::optional<Meeting> &next, const TitleOptions &options,
                      CalendarAuthorization authorization, Timestamp now, bool isNothingToRead = false);

} // namespace mivora
