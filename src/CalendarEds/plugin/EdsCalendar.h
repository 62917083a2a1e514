#pragma once

#include "CalendarEds/DesktopCalendars.h"
#include "CalendarEds/plugin/Glib.h"

#include <libecal/libecal.h>
#include <set>

namespace mivora {

/// One calendar of the server: opens it, follows it, and opens it again when it is lost.
class EdsCalendar
{
public:
    /// `onNews` is called when the reader was told something, or address() or hasAnswered() is another.
    EdsCalendar(ESource *source, DesktopInterval interval, DesktopCalendarsReader &reader,
                std::function<void()> onNews);
    ~EdsCalendar();
    EdsCalendar(const EdsCalendar &) = delete;
    EdsCalendar &operator=(const EdsCalendar &) = delete;

    /// The calendar's e-mail address; empty when it has none, or hasn't told it yet.
    const std::string &address() const { return m_address; }

    /// Whether it was loaded, or failed, once.
    bool hasAnswered() const { return m_hasAnswered; }

    void setInterval(DesktopInterval interval);

private:
    void open();
    void handleClient(GAsyncResult *result);
    void askAddress();
    void makeView();
    void handleView(GAsyncResult *result);
    void followView();
    void startView();
    void handleObjects(const GSList *components);
    void handleRemoved(const GSList *ids);
    void handleComplete(const GError *error);
    void askTimeZone(const std::string &id);
    void takeTimeZone(const std::string &id, GAsyncResult *result);
    void fail(const std::string &what, const GError *error);
    void close();
    void closeView();

    GlibObject<ESource> m_source;
    DesktopInterval m_interval;
    DesktopCalendarsReader &m_reader;
    std::function<void()> m_onNews;
    std::string m_id;
    std::string m_address;
    GlibObject<ECalClient> m_client;
    GlibObject<ECalClientView> m_view;
    /// What the view tells comes through it.
    std::unique_ptr<GlibRelay> m_relay;
    /// Those that were asked for; each is asked once.
    std::set<std::string> m_zones;
    bool m_hasAnswered = false;
    /// What was logged last: a calendar that stays away is not reported with every attempt.
    std::string m_reported;
    Retry m_retry;
    /// Of the client, and of the view: replaced with them.
    std::unique_ptr<GlibCalls> m_calls;
    std::unique_ptr<GlibCalls> m_viewCalls;
};

} // namespace mivora
