#include "CalendarFolder/FolderProbe.h"

#include "Calendar/CalendarLoader.h"
#include "CalendarFolder/FileReading.h"

#include <atomic>
#include <thread>

namespace mivora {

namespace {

/// How long a folder may take to answer at first before it counts as hanging.
constexpr std::chrono::milliseconds patience{3000};

bool isDone(const std::future<void> &look, std::chrono::milliseconds wait)
{
    return look.wait_for(wait) == std::future_status::ready;
}

} // namespace

bool FolderProbe::answers(const std::string &path)
{
    if (m_answered.contains(path))
        return true;
    if (const auto known = m_hanging.find(path); known != m_hanging.end()) {
        if (!isDone(known->second, {}))
            return false;
        m_hanging.erase(known);
    } else {
        std::promise<void> answer;
        std::future<void> look = answer.get_future();
        const auto isLate = std::make_shared<std::atomic<bool>>(false);
        std::thread([path, isLate, onAnswer = m_onAnswer, answer = std::move(answer)]() mutable {
            openFolder(path);
            answer.set_value();
            if (*isLate)
                onAnswer();
        }).detach();
        if (!isDone(look, patience)) {
            *isLate = true;
            qCWarning(calendarLog, "%s: the folder does not answer; its calendars are left out until it does",
                      printable(path).c_str());
            m_hanging.emplace(path, std::move(look));
            // It may have answered just now.
            return answers(path);
        }
    }
    m_answered.insert(path);
    return true;
}

} // namespace mivora
