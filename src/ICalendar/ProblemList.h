#pragma once

#include "ICalendar/CalendarText.h"

namespace mivora::ical {

/// Collects the problems of one text. Only so many are kept: who has a thousand is told enough by the first.
class ProblemList
{
public:
    explicit ProblemList(std::string_view text) : m_text(text) {}

    /// \a at points into the text.
    void add(const char *at, std::string message);

    /// The problems in the order of their lines, each told once.
    std::vector<TextProblem> numbered();

private:
    struct Problem
    {
        const char *at = nullptr;
        std::string message;

        friend auto operator<=>(const Problem &, const Problem &) = default;
    };

    std::string_view m_text;
    std::vector<Problem> m_problems;
};

} // namespace mivora::ical
