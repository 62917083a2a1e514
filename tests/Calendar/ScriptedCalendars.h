#pragma once

#include "Calendar/desktop/DesktopCalendars.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace mivora {

/// What a test has the desktop tell, step by step, and what it was asked for.
class DesktopScript
{
public:
    using Step = std::function<void(DesktopCalendarsReader &)>;

    void tell(Step step)
    {
        const std::lock_guard lock(m_mutex);
        m_steps.push_back(std::move(step));
        m_isNew.notify_one();
    }

    void stop() { tell({}); }

    /// Plays the steps until stop().
    void run(DesktopCalendarsReader &reader)
    {
        std::unique_lock lock(m_mutex);
        while (true) {
            m_isNew.wait(lock, [this] { return !m_steps.empty(); });
            const Step step = std::move(m_steps.front());
            m_steps.erase(m_steps.begin());
            if (!step)
                return;
            lock.unlock();
            step(reader);
            lock.lock();
        }
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_isNew;
    std::vector<Step> m_steps;
};

/// Calendars of the desktop that a test speaks for.
class ScriptedCalendars final : public DesktopCalendars
{
public:
    explicit ScriptedCalendars(std::shared_ptr<DesktopScript> script) : m_script(std::move(script)) {}

    void run(const std::string &, DesktopInterval, DesktopCalendarsReader &reader) override
    {
        m_script->run(reader);
    }

    void setInterval(DesktopInterval) override
    {
        m_script->tell([](DesktopCalendarsReader &reader) { reader.settle(true); });
    }

    void stop() override { m_script->stop(); }

private:
    std::shared_ptr<DesktopScript> m_script;
};

} // namespace mivora
