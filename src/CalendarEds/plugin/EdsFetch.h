#pragma once

#include "CalendarEds/DesktopCalendars.h"
#include "CalendarEds/plugin/Glib.h"

#include <libecal/libecal.h>
#include <optional>

namespace mivora {

/// What a failure means that the server tells of by itself: an answer by HTTP, or none.
SubscriptionFault faultAfter(const GError *error);

/// Has the server fetch one calendar of the net, and finds out how that went. Belongs to the thread that made
/// it.
class EdsFetch
{
public:
    /// Begins at once; `reader` is told what the calendar has by then. `onDone` is called once. An event is
    /// proof enough of a calendar that `isNew`: of others the server tells what it knows from before.
    EdsFetch(ESourceRegistry *registry, ESource *source, bool isNew, DesktopInterval interval,
             DesktopCalendarsReader &reader, std::function<void()> onDone);
    ~EdsFetch();
    EdsFetch(const EdsFetch &) = delete;
    EdsFetch &operator=(const EdsFetch &) = delete;

    /// Who hasn't answered so far is to blame.
    SubscriptionFault fault() const;

private:
    using Answered = void (EdsFetch::*)(GObject *object, GAsyncResult *result);

    gpointer then(Answered answered);
    void handleClient(GObject *object, GAsyncResult *result);
    void refresh();
    void handleRefresh(GObject *object, GAsyncResult *result);
    void askObjects();
    void handleObjects(GObject *object, GAsyncResult *result);
    void take(const GSList *components);
    void handleCredentials(ESourceCredentialsReason reason, const GError *error);
    void finish(SubscriptionFault fault);

    GlibObject<ESourceRegistry> m_registry;
    GlibObject<ESource> m_source;
    bool m_isNew;
    bool m_isConnected = false;
    DesktopInterval m_interval;
    DesktopCalendarsReader &m_reader;
    std::function<void()> m_onDone;
    GlibObject<ECalClient> m_client;
    GlibSource m_quiet;
    std::optional<SubscriptionFault> m_fault;
    GlibCalls m_calls;
};

} // namespace mivora
