#pragma once

#include "CalendarEds/plugin/EdsFetch.h"

namespace mivora {

/// Does one request about the calendars that the program subscribed to: sources of the server's with
/// identifiers of ours. Belongs to the thread that made it, whose main context it runs.
class EdsSubscriptions
{
public:
    /// All of it ends soon once `cancellable` is cancelled and the context woken. Both outlive the object.
    EdsSubscriptions(DesktopInterval interval, DesktopCalendarsReader &reader, GCancellable *cancellable)
        : m_interval(interval), m_reader(reader), m_cancellable(cancellable)
    {
    }

    SubscriptionAnswer perform(const SubscriptionRequest &request, const std::vector<std::string> &addresses);

private:
    using Source = GlibObject<ESource>;

    SubscriptionAnswer answerTo(const SubscriptionRequest &request,
                                const std::vector<std::string> &addresses);
    SubscriptionAnswer fetch(const std::vector<Source> &sources, bool isNew);
    SubscriptionAnswer add(const std::string &name, const std::vector<std::string> &addresses);
    Source makeSource(const std::string &name, const std::string &address) const;
    std::string nextColor() const;
    std::vector<Source> ownSources(const std::string &id) const;
    SubscriptionAnswer done(bool isDone) const;
    void wait(const std::function<bool()> &isOver, std::chrono::milliseconds longest) const;

    DesktopInterval m_interval;
    DesktopCalendarsReader &m_reader;
    GCancellable *m_cancellable;
    GlibObject<ESourceRegistry> m_registry;
};

} // namespace mivora
