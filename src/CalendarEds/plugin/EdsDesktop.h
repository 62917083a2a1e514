#pragma once

#include "CalendarEds/DesktopCalendars.h"

#include <glib.h>
#include <mutex>

namespace mivora {

class EdsSession;

/// The thread-safe side of a session: a main context of its own, that other threads hand work to.
class EdsDesktop final : public DesktopCalendars
{
public:
    EdsDesktop();
    ~EdsDesktop() override;
    EdsDesktop(const EdsDesktop &) = delete;
    EdsDesktop &operator=(const EdsDesktop &) = delete;

    void run(const std::string &service, DesktopInterval interval, DesktopCalendarsReader &reader) override;
    void setInterval(DesktopInterval interval) override;
    void stop() override;

private:
    void follow(const std::string &service, DesktopInterval interval, DesktopCalendarsReader &reader);
    void takeInterval();
    void invoke(void (*function)(EdsDesktop &desktop));

    GMainContext *m_context;
    GMainLoop *m_loop;
    /// Only while run() is at work, and on its thread.
    EdsSession *m_session = nullptr;
    std::mutex m_mutex;
    std::optional<DesktopInterval> m_wantedInterval;
};

} // namespace mivora
