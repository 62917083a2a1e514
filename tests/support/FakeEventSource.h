#pragma once

#include "Calendar/EventSource.h"

#include <tuple>
#include <utility>

namespace mivora {

/// A calendar source with events given by a test. It hands them out in the order in which they were given and
/// remembers what it was asked.
class FakeEventSource final : public EventSource
{
public:
    /// From when to when, and of which calendars.
    using Fetch = std::tuple<Timestamp, Timestamp, std::optional<std::set<std::string>>>;

    CalendarAuthorization authorization() const override { return access; }

    bool isNothingToRead() const override { return isNothing; }

    void requestAccess(std::function<void(bool)> answer) override { accessAnswer = std::move(answer); }

    void setOnChange(ChangeHandler handler) override { onChange = std::move(handler); }

    std::vector<CalendarInfo> calendars() const override
    {
        return access == CalendarAuthorization::granted ? known : std::vector<CalendarInfo>();
    }

    std::vector<Meeting> meetings(Timestamp start, Timestamp end,
                                  const std::optional<std::set<std::string>> &calendarIDs) override
    {
        fetches.emplace_back(start, end, calendarIDs);
        std::vector<Meeting> found;
        for (const Meeting &event : events) {
            const bool isSelected = !calendarIDs || calendarIDs->contains(event.calendarID);
            if (isSelected && event.start < end && (event.end > start || event.start == start))
                found.push_back(event);
        }
        return found;
    }

    CalendarAuthorization access = CalendarAuthorization::granted;
    bool isNothing = false;
    std::vector<CalendarInfo> known;
    std::vector<Meeting> events;

    /// Every query of meetings so far.
    std::vector<Fetch> fetches;
    /// What was handed in last.
    std::function<void(bool)> accessAnswer;
    ChangeHandler onChange;
};

} // namespace mivora
