#include "ICalendar/ProblemList.h"

#include <algorithm>

namespace mivora::ical {

namespace {

constexpr std::size_t mostProblems = 100;

} // namespace

void ProblemList::add(const char *at, std::string message)
{
    if (m_problems.size() < mostProblems)
        m_problems.push_back({at, std::move(message)});
}

std::vector<TextProblem> ProblemList::numbered()
{
    std::sort(m_problems.begin(), m_problems.end());
    m_problems.erase(std::unique(m_problems.begin(), m_problems.end()), m_problems.end());
    std::vector<TextProblem> result;
    const char *counted = m_text.data();
    std::int64_t line = 1;
    for (Problem &problem : m_problems) {
        line += std::count(counted, problem.at, '\n');
        counted = problem.at;
        result.push_back({line, std::move(problem.message)});
    }
    return result;
}

} // namespace mivora::ical
